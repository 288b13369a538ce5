#pragma once

#include <memory>

#include "app/application/FanLog.h"
#include "app/fan/FanController.h"
#include "app/shell/Lang.h"
#include "app/shell/Notifier.h"
#include "platform/AppPlatform.h"

namespace corvane {

/// The application's models on a platform's services. Main loop.
class Application {
public:
    /// Makes everything; the models begin to work when the main loop runs. `platform` outlives it.
    explicit Application(AppPlatform& platform);

    /// Releases what an earlier run may have left behind.
    void start();

    [[nodiscard]] FanController& fan() { return fan_; }

private:
    // In the order in which the platform makes them.
    std::unique_ptr<UserDefaults> defaults_;
    std::unique_ptr<Locale> locale_;
    std::unique_ptr<NotificationCenter> notificationCenter_;
    std::unique_ptr<HelperConnector> helperConnector_;
    std::unique_ptr<HelperInstaller> helperInstaller_;
    std::unique_ptr<ThermalStateMonitor> thermalMonitor_;
    std::unique_ptr<ResumeObserver> resumeObserver_;

    Lang lang_;
    Notifier notifier_;
    FanController fan_;
    FanLog fanLog_;
};

}  // namespace corvane
