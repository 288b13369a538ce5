#include "platform/linux/SystemdWatchdog.h"

#include <cstdint>

#include <systemd/sd-daemon.h>

namespace corvane {

SystemdWatchdog::SystemdWatchdog() {
    std::uint64_t microseconds = 0;
    if (sd_watchdog_enabled(0, &microseconds) > 0) {
        interval_ = std::chrono::microseconds(microseconds) / 2;
    }
}

void SystemdWatchdog::feed() {
    sd_notify(0, "WATCHDOG=1");
}

}  // namespace corvane
