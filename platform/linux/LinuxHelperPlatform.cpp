#include "platform/linux/LinuxHelperPlatform.h"

#include <utility>

#include <unistd.h>

#include "platform/linux/AsioSerialQueue.h"
#include "platform/linux/DBusHelperListener.h"
#include "platform/linux/JournalPath.h"
#include "platform/linux/LogindObserver.h"
#include "platform/linux/SystemdWatchdog.h"
#include "platform/linux/hwmon/makeHwmonSmc.h"

namespace corvane {

LinuxHelperPlatform::LinuxHelperPlatform(HelperBus bus, std::string sysfsRoot)
    : bus_(std::move(bus)), sysfsRoot_(std::move(sysfsRoot)) {}

UserIds LinuxHelperPlatform::userIds() const {
    return {static_cast<int>(getuid()), static_cast<int>(geteuid())};
}

std::unique_ptr<SerialQueue> LinuxHelperPlatform::makeQueue(std::string_view label) {
    return std::make_unique<AsioSerialQueue>(label);
}

std::unique_ptr<SmcConnection> LinuxHelperPlatform::makeSmcConnection(SerialQueue& queue) {
    return makeHwmonSmc({sysfsRoot_, fanJournalPath(sysfsRoot_), FanOwner::helper}, &queue, log_);
}

std::unique_ptr<SystemSleepSetting> LinuxHelperPlatform::makeSystemSleepSetting() {
    auto setting = std::make_unique<LogindSleepSetting>();
    sleepSetting_ = setting.get();
    return setting;
}

std::unique_ptr<SuspendObserver> LinuxHelperPlatform::makeSuspendObserver() {
    return std::make_unique<LogindObserver>(mainLoop_.context(), log_,
                                            [this] { sleepSetting_->takeAgain(); });
}

std::unique_ptr<ServiceWatchdog> LinuxHelperPlatform::makeServiceWatchdog() {
    return std::make_unique<SystemdWatchdog>();
}

std::unique_ptr<HelperListener> LinuxHelperPlatform::makeListener() {
    return std::make_unique<DBusHelperListener>(mainLoop_.context(), bus_, [this](const std::string& reason) {
        log_.write("Corvane daemon: lost the bus — releasing to Apple: " + reason);
        mainLoop_.exit(1);
    });
}

}  // namespace corvane
