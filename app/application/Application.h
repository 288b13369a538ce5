#pragma once

#include <memory>

#include "app/application/FanLog.h"
#include "app/session/SleepManager.h"
#include "app/shell/Lang.h"
#include "app/shell/Notifier.h"
#include "platform/AppPlatform.h"

namespace corvane {

/// The application's models on a platform's services. Main loop.
class Application {
public:
    /// Makes everything: releases what an earlier run may have left forced, and goes on with the rules and
    /// the drives that it left. `platform` outlives the application.
    explicit Application(AppPlatform& platform);

    /// The root model.
    [[nodiscard]] SleepManager& manager() { return manager_; }

    // What the user interface needs of the platform too.

    [[nodiscard]] UserDefaults& defaults() { return *defaults_; }
    [[nodiscard]] const Locale& locale() const { return *locale_; }
    [[nodiscard]] PowerSources& powerSources() { return *powerSources_; }
    [[nodiscard]] Volumes& volumes() { return *volumes_; }
    [[nodiscard]] UrlOpener& urlOpener() { return *urlOpener_; }
    [[nodiscard]] const Lang& lang() const { return lang_; }

private:
    // In the order in which the platform makes them.
    std::unique_ptr<UserDefaults> defaults_;
    std::unique_ptr<Locale> locale_;
    std::unique_ptr<NotificationCenter> notificationCenter_;
    std::unique_ptr<HelperConnector> helperConnector_;
    std::unique_ptr<HelperInstaller> helperInstaller_;
    std::unique_ptr<ThermalStateMonitor> thermalMonitor_;
    std::unique_ptr<PowerSources> powerSources_;
    std::unique_ptr<ResumeObserver> resumeObserver_;
    std::unique_ptr<PowerAssertions> powerAssertions_;
    std::unique_ptr<Displays> displays_;
    std::unique_ptr<RunningApplications> runningApplications_;
    std::unique_ptr<Volumes> volumes_;
    std::unique_ptr<HttpsClient> httpsClient_;
    std::unique_ptr<UrlOpener> urlOpener_;

    Lang lang_;
    Notifier notifier_;
    SleepManager manager_;
    FanLog fanLog_;
};

}  // namespace corvane
