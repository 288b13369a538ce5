#include "platform/linux/gui/LinuxAppPlatform.h"

#include <cstdlib>
#include <utility>

#include <unistd.h>

#include "platform/ExecutablePath.h"
#include "platform/linux/desktop/DBusHelperConnector.h"
#include "platform/linux/desktop/DBusNotificationCenter.h"
#include "platform/linux/desktop/DesktopPowerAssertions.h"
#include "platform/linux/desktop/DrmDisplays.h"
#include "platform/linux/desktop/EnvironmentLocale.h"
#include "platform/linux/desktop/JsonUserDefaults.h"
#include "platform/linux/desktop/LinuxThermalState.h"
#include "platform/linux/desktop/LogindResumeObserver.h"
#include "platform/linux/desktop/PkexecInstaller.h"
#include "platform/linux/desktop/PkexecUninstaller.h"
#include "platform/linux/desktop/PrivateBusUninstaller.h"
#include "platform/linux/desktop/QtHttpsClient.h"
#include "platform/linux/desktop/SessionApplications.h"
#include "platform/linux/desktop/SuppliedHelper.h"
#include "platform/linux/desktop/SysfsPowerSupplies.h"
#include "platform/linux/desktop/UDisksVolumes.h"
#include "platform/linux/desktop/UPowerSources.h"
#include "platform/linux/desktop/UserSingleInstance.h"
#include "platform/linux/desktop/XdgInstalledApplications.h"
#include "platform/linux/desktop/XdgLoginItem.h"
#include "platform/linux/desktop/XdgUrlOpener.h"
#include "platform/linux/desktop/makeHotKeys.h"
#include "platform/linux/gui/DesktopActivationPolicy.h"
#include "platform/linux/gui/DesktopAppearance.h"
#include "platform/linux/gui/DesktopStatusItem.h"
#include "platform/posix/WaitingRelauncher.h"

namespace corvane {

namespace {

const char* environment(const char* name) {
    return std::getenv(name);
}

BusThread& started(std::unique_ptr<BusThread>& thread, const char* label) {
    if (!thread) {
        thread = std::make_unique<BusThread>(label);
    }
    return *thread;
}

/// What the application brings along to install its helper and to remove itself, as seen from its executable.
std::filesystem::path applicationFolder() {
    return executablePath().parent_path().parent_path() / CORVANE_LIBEXEC_FOLDER;
}

}  // namespace

LinuxAppPlatform::LinuxAppPlatform(HelperBus helperBus, std::string sysfsRoot)
    : helperBus_(std::move(helperBus)), sysfsRoot_(std::move(sysfsRoot)) {}

LinuxAppPlatform::~LinuxAppPlatform() = default;

BusThread& LinuxAppPlatform::systemBus() {
    return started(systemBus_, "system bus");
}

BusThread& LinuxAppPlatform::sessionBus() {
    return started(sessionBus_, "session bus");
}

std::unique_ptr<SingleInstance> LinuxAppPlatform::makeSingleInstance() {
    return std::make_unique<UserSingleInstance>(instanceFolder(environment), log_);
}

std::unique_ptr<UserDefaults> LinuxAppPlatform::makeUserDefaults() {
    return std::make_unique<JsonUserDefaults>(settingsPath(environment), log_);
}

std::unique_ptr<Locale> LinuxAppPlatform::makeLocale() {
    return std::make_unique<EnvironmentLocale>(environment);
}

std::unique_ptr<NotificationCenter> LinuxAppPlatform::makeNotificationCenter() {
    return std::make_unique<DBusNotificationCenter>(sessionBus(), mainQueue_);
}

std::unique_ptr<HelperConnector> LinuxAppPlatform::makeHelperConnector() {
    return std::make_unique<DBusHelperConnector>(systemBus(), mainQueue_, helperBus_);
}

std::unique_ptr<HelperInstaller> LinuxAppPlatform::makeHelperInstaller() {
    if (!helperBus_.isSystem()) {
        return std::make_unique<SuppliedHelper>();
    }
    return std::make_unique<PkexecInstaller>(files_, PkexecInstaller::Paths{.folder = applicationFolder()});
}

std::unique_ptr<ThermalStateMonitor> LinuxAppPlatform::makeThermalStateMonitor() {
    return std::make_unique<LinuxThermalState>(mainQueue_, sysfsRoot_);
}

std::unique_ptr<PowerSources> LinuxAppPlatform::makePowerSources() {
    if (sysfsRoot_ != "/sys") {
        // UPower reads this machine's own tree, whatever tree is asked for.
        return std::make_unique<SysfsPowerSupplies>(sysfsRoot_);
    }
    return std::make_unique<UPowerSources>(systemBus(), sysfsRoot_);
}

std::unique_ptr<ResumeObserver> LinuxAppPlatform::makeResumeObserver() {
    return std::make_unique<LogindResumeObserver>(systemBus(), mainQueue_, log_);
}

std::unique_ptr<PowerAssertions> LinuxAppPlatform::makePowerAssertions() {
    return std::make_unique<DesktopPowerAssertions>(sessionBus(), systemBus(), mainQueue_, log_);
}

std::unique_ptr<Displays> LinuxAppPlatform::makeDisplays() {
    return std::make_unique<DrmDisplays>(mainQueue_, sysfsRoot_);
}

std::unique_ptr<RunningApplications> LinuxAppPlatform::makeRunningApplications() {
    return std::make_unique<SessionApplications>(sessionBus(), mainQueue_, environment);
}

std::unique_ptr<Volumes> LinuxAppPlatform::makeVolumes() {
    return std::make_unique<UDisksVolumes>(systemBus(), mainQueue_);
}

std::unique_ptr<HttpsClient> LinuxAppPlatform::makeHttpsClient() {
    return std::make_unique<QtHttpsClient>(mainQueue_);
}

std::unique_ptr<UrlOpener> LinuxAppPlatform::makeUrlOpener() {
    return std::make_unique<XdgUrlOpener>();
}

std::unique_ptr<Appearance> LinuxAppPlatform::makeAppearance() {
    return std::make_unique<DesktopAppearance>(sessionBus(), mainQueue_, environment);
}

std::unique_ptr<StatusItem> LinuxAppPlatform::makeStatusItem(Appearance& appearance) {
    return std::make_unique<DesktopStatusItem>(
        sessionBus(), mainQueue_, appearance, environment,
        DesktopStatusItem::Options{.display = trayDisplay(environment)});
}

std::unique_ptr<LoginItem> LinuxAppPlatform::makeLoginItem() {
    return std::make_unique<XdgLoginItem>(files_, log_, autostartFile(environment), executablePath());
}

std::unique_ptr<InstalledApplications> LinuxAppPlatform::makeInstalledApplications(const Locale& locale) {
    return std::make_unique<XdgInstalledApplications>(mainQueue_, locale, environment);
}

std::unique_ptr<HotKeyService> LinuxAppPlatform::makeHotKeyService() {
    return makeHotKeys(environment, sessionBus(), mainQueue_, log_);
}

std::unique_ptr<ActivationPolicy> LinuxAppPlatform::makeActivationPolicy() {
    return std::make_unique<DesktopActivationPolicy>();
}

std::unique_ptr<Relauncher> LinuxAppPlatform::makeRelauncher() {
    return std::make_unique<WaitingRelauncher>(std::vector{executablePath().string()}, environ, log_);
}

std::unique_ptr<Uninstaller> LinuxAppPlatform::makeUninstaller(LoginItem& loginItem, UserDefaults& defaults) {
    if (!helperBus_.isSystem()) {
        return std::make_unique<PrivateBusUninstaller>();
    }
    return std::make_unique<PkexecUninstaller>(
        loginItem, defaults, files_,
        PkexecUninstaller::Paths{.folder = applicationFolder(), .traces = userTraces(environment)});
}

}  // namespace corvane
