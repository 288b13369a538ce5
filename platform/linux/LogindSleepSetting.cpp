#include "platform/linux/LogindSleepSetting.h"

#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/LogindLock.h"

namespace corvane {

std::optional<std::string> LogindSleepSetting::setSleepDisabled(bool disabled) {
    const std::lock_guard guard(mutex_);
    if (disabled) {
        return take();
    }
    lock_.reset();
    return std::nullopt;
}

void LogindSleepSetting::takeAgain() {
    const std::lock_guard guard(mutex_);
    if (lock_.isValid()) {
        // A lock that cannot be had again leaves the old one, which may or may not still count.
        take();
    }
}

/// The old lock is let go only after the new one is held.
std::optional<std::string> LogindSleepSetting::take() {
    try {
        if (!connection_) {
            connection_ = sdbus::createSystemBusConnection();
        }
        const auto manager = sdbus::createProxy(*connection_, Logind::busName, Logind::objectPath);
        lock_ = Logind::takeLock(*manager, "sleep:handle-lid-switch", "The lid may be closed", "block");
        return std::nullopt;
    } catch (const sdbus::Error& error) {
        connection_.reset();
        return error.getMessage();
    }
}

}  // namespace corvane
