#include "platform/macos/MacHelperPlatform.h"

#include <unistd.h>

#include "platform/macos/DispatchSerialQueue.h"
#include "platform/macos/FanLimitGuard.h"
#include "platform/macos/IoKitSmc.h"
#include "platform/macos/NoServiceWatchdog.h"
#include "platform/macos/PmsetSleepSetting.h"
#include "platform/macos/SystemPowerObservers.h"
#include "platform/macos/XpcHelperListener.h"

namespace corvane {

UserIds MacHelperPlatform::userIds() const {
    return {static_cast<int>(getuid()), static_cast<int>(geteuid())};
}

std::unique_ptr<SerialQueue> MacHelperPlatform::makeQueue(std::string_view label) {
    return std::make_unique<DispatchSerialQueue>(label);
}

std::unique_ptr<SmcConnection> MacHelperPlatform::makeSmcConnection(SerialQueue& /*queue*/) {
    return std::make_unique<FanLimitGuard>(std::make_unique<IoKitSmc>());
}

std::unique_ptr<SystemSleepSetting> MacHelperPlatform::makeSystemSleepSetting() {
    return std::make_unique<PmsetSleepSetting>();
}

std::unique_ptr<SuspendObserver> MacHelperPlatform::makeSuspendObserver() {
    return std::make_unique<SystemPowerSuspendObserver>();
}

std::unique_ptr<ServiceWatchdog> MacHelperPlatform::makeServiceWatchdog() {
    return std::make_unique<NoServiceWatchdog>();
}

std::unique_ptr<HelperListener> MacHelperPlatform::makeListener() {
    return std::make_unique<XpcHelperListener>();
}

}  // namespace corvane
