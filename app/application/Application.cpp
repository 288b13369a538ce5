#include "app/application/Application.h"

namespace corvane {

Application::Application(AppPlatform& platform)
    : defaults_(platform.makeUserDefaults()),
      locale_(platform.makeLocale()),
      notificationCenter_(platform.makeNotificationCenter()),
      helperConnector_(platform.makeHelperConnector()),
      helperInstaller_(platform.makeHelperInstaller()),
      thermalMonitor_(platform.makeThermalStateMonitor()),
      resumeObserver_(platform.makeResumeObserver()),
      lang_(*defaults_, *locale_),
      notifier_(*notificationCenter_),
      fan_({platform.mainQueue(), *helperConnector_, *helperInstaller_, *thermalMonitor_, *defaults_,
            notifier_, lang_, platform.log()}),
      fanLog_(fan_, platform.log()) {
    resumeObserver_->observe([this] { fan_.resumeAfterSuspend(); });
}

void Application::start() {
    fan_.reconcileToOffOnLaunch();
}

}  // namespace corvane
