#include "platform/linux/TimerDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <sys/timerfd.h>

namespace corvane {

int makeTimerDescriptor(clockid_t clock) {
    const int descriptor = timerfd_create(clock, TFD_NONBLOCK | TFD_CLOEXEC);
    if (descriptor < 0) {
        throw std::system_error(errno, std::system_category(), "no timer");
    }
    return descriptor;
}

void setTimerDescriptor(int descriptor, Duration deadline) {
    // To the kernel, zero would mean to stop and less than zero would be a mistake.
    const Duration expiry = std::max(deadline, Duration(1));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(expiry);
    itimerspec alarm{};
    alarm.it_value = {seconds.count(), (expiry - seconds).count()};
    timerfd_settime(descriptor, TFD_TIMER_ABSTIME, &alarm, nullptr);
}

void stopTimerDescriptor(int descriptor) {
    const itimerspec none{};
    timerfd_settime(descriptor, 0, &none, nullptr);
}

}  // namespace corvane
