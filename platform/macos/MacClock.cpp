#include "platform/macos/MacClock.h"

#include <cstdint>
#include <ctime>

#include <mach/mach_time.h>

namespace corvane {

namespace {

mach_timebase_info_data_t timebase() {
    mach_timebase_info_data_t info{};
    mach_timebase_info(&info);
    return info;
}

/// 64 bits are enough for either: 100 years are 8 × 10^16 ticks of 24 MHz, times 125.
Duration fromTicks(std::uint64_t ticks) {
    const mach_timebase_info_data_t base = timebase();
    return Duration(static_cast<Duration::rep>(ticks * base.numer / base.denom));
}

/// Rounded up: whoever waits never waits too short.
std::uint64_t toTicks(Duration duration) {
    const mach_timebase_info_data_t base = timebase();
    const auto nanoseconds = static_cast<std::uint64_t>(duration.count());
    return (nanoseconds * base.denom + base.numer - 1) / base.numer;
}

}  // namespace

BootTime macBootTime() {
    return BootTime(fromTicks(mach_continuous_time()));
}

WallTime macWallTime() {
    std::uint64_t awake = 0;
    std::uint64_t sinceBoot = 0;
    timespec calendar{};
    mach_get_times(&awake, &sinceBoot, &calendar);
    return WallTime(std::chrono::duration_cast<WallTime::duration>(
        std::chrono::seconds(calendar.tv_sec) + std::chrono::nanoseconds(calendar.tv_nsec)));
}

void macSleep(Duration duration) {
    if (duration <= Duration::zero()) {
        return;
    }
    const std::uint64_t deadline = mach_absolute_time() + toTicks(duration);
    while (mach_absolute_time() < deadline) {
        mach_wait_until(deadline);
    }
}

}  // namespace corvane
