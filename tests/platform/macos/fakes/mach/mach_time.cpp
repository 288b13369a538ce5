// The kernel's clocks, over FakeDispatch.

#include <chrono>

#include <mach/mach_time.h>

#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

using corvane::Duration;
using corvane::FakeDispatch;

namespace {

uint64_t toFakeTicks(Duration duration) {
    const FakeDispatch& kernel = FakeDispatch::current();
    return static_cast<uint64_t>(duration.count()) * kernel.timebaseDenom() / kernel.timebaseNumer();
}

}  // namespace

kern_return_t mach_timebase_info(mach_timebase_info_t info) {
    info->numer = FakeDispatch::current().timebaseNumer();
    info->denom = FakeDispatch::current().timebaseDenom();
    return KERN_SUCCESS;
}

uint64_t mach_absolute_time(void) {
    return toFakeTicks(FakeDispatch::current().awakeTime());
}

uint64_t mach_continuous_time(void) {
    return toFakeTicks(FakeDispatch::current().time().bootTime().time_since_epoch());
}

kern_return_t mach_get_times(uint64_t* absoluteTime, uint64_t* continuousTime, struct timespec* calendar) {
    *absoluteTime = mach_absolute_time();
    *continuousTime = mach_continuous_time();
    const std::chrono::nanoseconds now = FakeDispatch::current().time().wallTime().time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(now);
    calendar->tv_sec = seconds.count();
    calendar->tv_nsec = (now - seconds).count();
    return KERN_SUCCESS;
}

kern_return_t mach_wait_until(uint64_t deadline) {
    FakeDispatch& kernel = FakeDispatch::current();
    const uint64_t now = mach_absolute_time();
    const uint64_t ticks = deadline > now ? deadline - now : 0;
    // Up to the tick, which may begin within the last nanosecond.
    kernel.sleep(Duration(static_cast<Duration::rep>(
        (ticks * kernel.timebaseNumer() + kernel.timebaseDenom() - 1) / kernel.timebaseDenom())));
    return KERN_SUCCESS;
}
