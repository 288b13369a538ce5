#include "platform/linux/LinuxCommandPlatform.h"

#include <utility>

#include <unistd.h>

#include "platform/linux/JournalPath.h"
#include "platform/linux/hwmon/makeHwmonSmc.h"

namespace corvane {

LinuxCommandPlatform::LinuxCommandPlatform(std::string sysfsRoot) : sysfsRoot_(std::move(sysfsRoot)) {}

bool LinuxCommandPlatform::isRoot() const {
    return geteuid() == 0;
}

std::unique_ptr<SmcConnection> LinuxCommandPlatform::makeSmcConnection() {
    return makeHwmonSmc({sysfsRoot_, fanJournalPath(sysfsRoot_), FanOwner::diagnostics}, nullptr, log_);
}

}  // namespace corvane
