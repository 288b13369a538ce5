#include "platform/linux/SignalPause.h"

#include <algorithm>
#include <cerrno>
#include <ctime>

#include "platform/linux/HeldSignals.h"
#include "platform/linux/LinuxClock.h"

namespace corvane {

void SignalPause::holdTerminationSignals() {
    blockTerminationSignals();
}

bool SignalPause::pause(Duration duration) {
    const BootTime end = linuxBootTime() + duration;
    while (!isInterrupted_) {
        const Duration left = std::max(end - linuxBootTime(), Duration::zero());
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
        const timespec wait{seconds.count(), (left - seconds).count()};
        const int signal = sigtimedwait(&terminationSignals(), nullptr, &wait);
        if (signal < 0 && errno == EAGAIN) {
            return true;
        }
        isInterrupted_ = signal > 0;
    }
    return false;
}

BootTime SignalPause::bootTime() const {
    return linuxBootTime();
}

}  // namespace corvane
