#include "platform/macos/gui/MacAppPlatform.h"

#include "platform/macos/SystemPowerObservers.h"
#include "platform/macos/desktop/CarbonHotKeys.h"
#include "platform/macos/desktop/CoreGraphicsDisplays.h"
#include "platform/macos/desktop/IoKitPowerAssertions.h"
#include "platform/macos/desktop/IoKitPowerSources.h"
#include "platform/macos/desktop/MacHttpsClient.h"
#include "platform/macos/desktop/MacInstalledApplications.h"
#include "platform/macos/desktop/MacLocale.h"
#include "platform/macos/desktop/MacLoginItem.h"
#include "platform/macos/desktop/MacNotificationCenter.h"
#include "platform/macos/desktop/MacRunningApplications.h"
#include "platform/macos/desktop/MacSingleInstance.h"
#include "platform/macos/desktop/MacThermalState.h"
#include "platform/macos/desktop/MacUrlOpener.h"
#include "platform/macos/desktop/MacUserDefaults.h"
#include "platform/macos/desktop/MacVolumes.h"
#include "platform/macos/desktop/XpcHelperConnector.h"
#include "platform/macos/desktop/makeMacRelauncher.h"
#include "platform/macos/gui/MacActivationPolicy.h"
#include "platform/macos/gui/MacAppearance.h"
#include "platform/macos/gui/MacStatusItem.h"

namespace corvane {

std::unique_ptr<SingleInstance> MacAppPlatform::makeSingleInstance() {
    return std::make_unique<MacSingleInstance>(mainQueue_, log_);
}

std::unique_ptr<UserDefaults> MacAppPlatform::makeUserDefaults() {
    return std::make_unique<MacUserDefaults>(log_);
}

std::unique_ptr<Locale> MacAppPlatform::makeLocale() {
    return std::make_unique<MacLocale>();
}

std::unique_ptr<NotificationCenter> MacAppPlatform::makeNotificationCenter() {
    return std::make_unique<MacNotificationCenter>(mainQueue_);
}

std::unique_ptr<HelperConnector> MacAppPlatform::makeHelperConnector() {
    return std::make_unique<XpcHelperConnector>(mainQueue_);
}

std::unique_ptr<ThermalStateMonitor> MacAppPlatform::makeThermalStateMonitor() {
    return std::make_unique<MacThermalState>(mainQueue_);
}

std::unique_ptr<PowerSources> MacAppPlatform::makePowerSources() {
    return std::make_unique<IoKitPowerSources>();
}

std::unique_ptr<ResumeObserver> MacAppPlatform::makeResumeObserver() {
    return std::make_unique<SystemPowerResumeObserver>();
}

std::unique_ptr<PowerAssertions> MacAppPlatform::makePowerAssertions() {
    return std::make_unique<IoKitPowerAssertions>();
}

std::unique_ptr<Displays> MacAppPlatform::makeDisplays() {
    return std::make_unique<CoreGraphicsDisplays>(mainQueue_);
}

std::unique_ptr<RunningApplications> MacAppPlatform::makeRunningApplications() {
    return std::make_unique<MacRunningApplications>(mainQueue_);
}

std::unique_ptr<Volumes> MacAppPlatform::makeVolumes() {
    return std::make_unique<MacVolumes>(mainQueue_);
}

std::unique_ptr<HttpsClient> MacAppPlatform::makeHttpsClient() {
    return std::make_unique<MacHttpsClient>(mainQueue_);
}

std::unique_ptr<UrlOpener> MacAppPlatform::makeUrlOpener() {
    return std::make_unique<MacUrlOpener>();
}

std::unique_ptr<Appearance> MacAppPlatform::makeAppearance() {
    return std::make_unique<MacAppearance>();
}

std::unique_ptr<StatusItem> MacAppPlatform::makeStatusItem(Appearance& /*appearance*/) {
    // The menu bar colours it.
    return std::make_unique<MacStatusItem>(mainQueue_);
}

std::unique_ptr<LoginItem> MacAppPlatform::makeLoginItem() {
    return std::make_unique<MacLoginItem>(log_);
}

std::unique_ptr<InstalledApplications> MacAppPlatform::makeInstalledApplications(const Locale& /*locale*/) {
    // The system knows the user's language by itself.
    return std::make_unique<MacInstalledApplications>(mainQueue_);
}

std::unique_ptr<HotKeyService> MacAppPlatform::makeHotKeyService() {
    return std::make_unique<CarbonHotKeys>();
}

std::unique_ptr<ActivationPolicy> MacAppPlatform::makeActivationPolicy() {
    return std::make_unique<MacActivationPolicy>();
}

std::unique_ptr<Relauncher> MacAppPlatform::makeRelauncher() {
    return makeMacRelauncher(log_);
}

}  // namespace corvane
