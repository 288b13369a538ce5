#include "platform/linux/LinuxClock.h"

#include <ctime>

namespace corvane {

BootTime linuxBootTime() {
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return BootTime(std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec));
}

WallTime linuxWallTime() {
    return std::chrono::system_clock::now();
}

}  // namespace corvane
