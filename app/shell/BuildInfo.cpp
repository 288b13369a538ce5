#include "app/shell/BuildInfo.h"

namespace corvane {

const std::string_view BuildInfo::version = CORVANE_VERSION;
const std::string_view BuildInfo::updateFeed = CORVANE_UPDATE_FEED;
const std::string_view BuildInfo::homePage = CORVANE_HOME_PAGE;

}  // namespace corvane
