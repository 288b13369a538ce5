#pragma once

#include <memory>

#include "platform/ActivationPolicy.h"
#include "platform/Appearance.h"
#include "platform/Displays.h"
#include "platform/HelperConnection.h"
#include "platform/HelperInstaller.h"
#include "platform/HotKeyService.h"
#include "platform/HttpsClient.h"
#include "platform/InstalledApplications.h"
#include "platform/Locale.h"
#include "platform/Log.h"
#include "platform/LoginItem.h"
#include "platform/MainLoop.h"
#include "platform/NotificationCenter.h"
#include "platform/PowerAssertions.h"
#include "platform/PowerSources.h"
#include "platform/Relauncher.h"
#include "platform/ResumeObserver.h"
#include "platform/RunningApplications.h"
#include "platform/SerialQueue.h"
#include "platform/SingleInstance.h"
#include "platform/StatusItem.h"
#include "platform/ThermalStateMonitor.h"
#include "platform/Uninstaller.h"
#include "platform/UrlOpener.h"
#include "platform/UserDefaults.h"
#include "platform/Volumes.h"

namespace corvane {

/// Everything the application needs of a platform. The composition root first holds the termination signals,
/// then calls each `make` at most once, in the order of declaration, on the main thread, and destroys what it
/// got in reverse order, before the platform.
class AppPlatform {
public:
    AppPlatform() = default;
    AppPlatform(const AppPlatform&) = delete;
    AppPlatform& operator=(const AppPlatform&) = delete;
    virtual ~AppPlatform() = default;

    virtual Log& log() = 0;
    virtual MainLoop& mainLoop() = 0;
    /// The main loop as a queue, which all services bring their results to.
    virtual SerialQueue& mainQueue() = 0;

    virtual std::unique_ptr<SingleInstance> makeSingleInstance() = 0;
    virtual std::unique_ptr<UserDefaults> makeUserDefaults() = 0;
    virtual std::unique_ptr<Locale> makeLocale() = 0;
    virtual std::unique_ptr<NotificationCenter> makeNotificationCenter() = 0;
    virtual std::unique_ptr<HelperConnector> makeHelperConnector() = 0;
    virtual std::unique_ptr<HelperInstaller> makeHelperInstaller() = 0;
    virtual std::unique_ptr<ThermalStateMonitor> makeThermalStateMonitor() = 0;
    virtual std::unique_ptr<PowerSources> makePowerSources() = 0;
    virtual std::unique_ptr<ResumeObserver> makeResumeObserver() = 0;
    virtual std::unique_ptr<PowerAssertions> makePowerAssertions() = 0;
    virtual std::unique_ptr<Displays> makeDisplays() = 0;
    virtual std::unique_ptr<RunningApplications> makeRunningApplications() = 0;
    virtual std::unique_ptr<Volumes> makeVolumes() = 0;
    virtual std::unique_ptr<HttpsClient> makeHttpsClient() = 0;
    virtual std::unique_ptr<UrlOpener> makeUrlOpener() = 0;
    virtual std::unique_ptr<Appearance> makeAppearance() = 0;
    /// `appearance` outlives the item.
    virtual std::unique_ptr<StatusItem> makeStatusItem(Appearance& appearance) = 0;
    virtual std::unique_ptr<LoginItem> makeLoginItem() = 0;
    /// `locale` outlives the applications.
    virtual std::unique_ptr<InstalledApplications> makeInstalledApplications(const Locale& locale) = 0;
    virtual std::unique_ptr<HotKeyService> makeHotKeyService() = 0;
    virtual std::unique_ptr<ActivationPolicy> makeActivationPolicy() = 0;
    virtual std::unique_ptr<Relauncher> makeRelauncher() = 0;
    /// Both outlive the uninstaller.
    virtual std::unique_ptr<Uninstaller> makeUninstaller(LoginItem& loginItem, UserDefaults& defaults) = 0;
};

}  // namespace corvane
