#include "app/shell/BuildInfo.h"

namespace corvane {

const char* const BuildInfo::version = CORVANE_VERSION;
const char* const BuildInfo::buildNumber = CORVANE_BUILD_NUMBER;
const char* const BuildInfo::updateFeed = CORVANE_UPDATE_FEED;
const char* const BuildInfo::homePage = CORVANE_HOME_PAGE;
const char* const BuildInfo::supportMail = CORVANE_SUPPORT_MAIL;

}  // namespace corvane
