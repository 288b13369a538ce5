#pragma once

#include <memory>

#include "platform/AppPlatform.h"
#include "platform/macos/DispatchSerialQueue.h"
#include "platform/macos/NSLogLog.h"
#include "platform/macos/desktop/SteadyActivity.h"
#include "platform/macos/gui/CocoaMainLoop.h"

namespace corvane {

/// The application on a Mac, without what installs its helper, which the platforms below have no words for.
/// Made after the QGuiApplication; main thread.
class MacAppPlatform : public AppPlatform {
public:
    Log& log() override { return log_; }
    MainLoop& mainLoop() override { return mainLoop_; }
    SerialQueue& mainQueue() override { return mainQueue_; }
    std::unique_ptr<SingleInstance> makeSingleInstance() override;
    std::unique_ptr<UserDefaults> makeUserDefaults() override;
    std::unique_ptr<Locale> makeLocale() override;
    std::unique_ptr<NotificationCenter> makeNotificationCenter() override;
    std::unique_ptr<HelperConnector> makeHelperConnector() override;
    std::unique_ptr<ThermalStateMonitor> makeThermalStateMonitor() override;
    std::unique_ptr<PowerSources> makePowerSources() override;
    std::unique_ptr<ResumeObserver> makeResumeObserver() override;
    std::unique_ptr<PowerAssertions> makePowerAssertions() override;
    std::unique_ptr<Displays> makeDisplays() override;
    std::unique_ptr<RunningApplications> makeRunningApplications() override;
    std::unique_ptr<Volumes> makeVolumes() override;
    std::unique_ptr<HttpsClient> makeHttpsClient() override;
    std::unique_ptr<UrlOpener> makeUrlOpener() override;
    std::unique_ptr<Appearance> makeAppearance() override;
    std::unique_ptr<StatusItem> makeStatusItem(Appearance& appearance) override;
    std::unique_ptr<LoginItem> makeLoginItem() override;
    std::unique_ptr<InstalledApplications> makeInstalledApplications(const Locale& locale) override;
    std::unique_ptr<HotKeyService> makeHotKeyService() override;
    std::unique_ptr<ActivationPolicy> makeActivationPolicy() override;
    std::unique_ptr<Relauncher> makeRelauncher() override;

private:
    SteadyActivity activity_;
    NSLogLog log_;
    CocoaMainLoop mainLoop_;
    DispatchSerialQueue mainQueue_{DispatchSerialQueue::OfMainThread{}};
};

}  // namespace corvane
