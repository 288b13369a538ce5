#include "app/application/Application.h"

#include <string>

#include "app/shell/BuildInfo.h"

namespace corvane {

namespace {

UpdateCheckerConfiguration builtInConfiguration() {
    return {.feedUrl = std::string(BuildInfo::updateFeed),
            .homePage = std::string(BuildInfo::homePage),
            .currentVersion = std::string(BuildInfo::version)};
}

}  // namespace

Application::Application(AppPlatform& platform)
    : defaults_(platform.makeUserDefaults()),
      locale_(platform.makeLocale()),
      notificationCenter_(platform.makeNotificationCenter()),
      helperConnector_(platform.makeHelperConnector()),
      helperInstaller_(platform.makeHelperInstaller()),
      thermalMonitor_(platform.makeThermalStateMonitor()),
      powerSources_(platform.makePowerSources()),
      resumeObserver_(platform.makeResumeObserver()),
      powerAssertions_(platform.makePowerAssertions()),
      displays_(platform.makeDisplays()),
      runningApplications_(platform.makeRunningApplications()),
      volumes_(platform.makeVolumes()),
      httpsClient_(platform.makeHttpsClient()),
      urlOpener_(platform.makeUrlOpener()),
      lang_(*defaults_, *locale_),
      notifier_(*notificationCenter_),
      manager_({platform.mainQueue(), *helperConnector_, *helperInstaller_, *thermalMonitor_, *powerSources_,
                *powerAssertions_, *displays_, *runningApplications_, *volumes_, *httpsClient_, *urlOpener_,
                *defaults_, *locale_, notifier_, lang_, platform.log()},
               builtInConfiguration()),
      fanLog_(manager_.fan(), platform.log()) {
    resumeObserver_->observe([this] { manager_.fan().resumeAfterSuspend(); });
}

}  // namespace corvane
