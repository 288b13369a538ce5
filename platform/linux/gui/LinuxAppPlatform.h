#pragma once

#include <memory>
#include <string>

#include "platform/AppPlatform.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/StderrLog.h"
#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/QtMainLoop.h"
#include "platform/linux/desktop/QtSerialQueue.h"
#include "platform/posix/PosixFileSystem.h"

namespace corvane {

/// The application on a Linux desktop. Made after the QCoreApplication, which is a QGuiApplication where
/// anything of the application is to be seen.
class LinuxAppPlatform : public AppPlatform {
public:
    LinuxAppPlatform(HelperBus helperBus, std::string sysfsRoot);
    ~LinuxAppPlatform() override;

    Log& log() override { return log_; }
    MainLoop& mainLoop() override { return mainLoop_; }
    SerialQueue& mainQueue() override { return mainQueue_; }
    std::unique_ptr<SingleInstance> makeSingleInstance() override;
    std::unique_ptr<UserDefaults> makeUserDefaults() override;
    std::unique_ptr<Locale> makeLocale() override;
    std::unique_ptr<NotificationCenter> makeNotificationCenter() override;
    std::unique_ptr<HelperConnector> makeHelperConnector() override;
    std::unique_ptr<HelperInstaller> makeHelperInstaller() override;
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
    std::unique_ptr<Uninstaller> makeUninstaller(LoginItem& loginItem, UserDefaults& defaults) override;

private:
    // Each bus has its thread, so that a desktop that hangs does not hold up the way to the helper. They are
    // started when they are first needed: the termination signals are held by then.
    BusThread& systemBus();
    BusThread& sessionBus();

    StderrLog log_;
    QtMainLoop mainLoop_;
    QtSerialQueue mainQueue_;
    HelperBus helperBus_;
    std::string sysfsRoot_;
    PosixFileSystem files_;
    std::unique_ptr<BusThread> systemBus_;
    std::unique_ptr<BusThread> sessionBus_;
};

}  // namespace corvane
