#include "platform/linux/desktop/QtTimers.h"

#include <cstdint>
#include <utility>

#include <unistd.h>

#include "platform/linux/TimerDescriptor.h"

namespace corvane {

QtTimers::QtTimers(clockid_t clock, Now now)
    : now_(std::move(now)), alarm_(makeTimerDescriptor(clock), [this] { runDue(); }) {}

void QtTimers::runDue() {
    std::uint64_t expiries = 0;
    [[maybe_unused]] const ssize_t size = read(alarm_.get(), &expiries, sizeof expiries);
    timers_.runDue();
}

void QtTimers::set(Duration due) {
    setTimerDescriptor(alarm_.get(), due);
}

void QtTimers::stop() {
    stopTimerDescriptor(alarm_.get());
}

}  // namespace corvane
