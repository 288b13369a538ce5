#pragma once

#include <cstdint>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "platform/SerialQueue.h"
#include "platform/linux/desktop/QtDescriptor.h"

namespace corvane {

/// Timers on one of the system's clocks, which run on the event loop of the thread that made this; they all
/// share one descriptor. That thread only. Outlives its timers.
class QtTimers {
public:
    /// A point of the clock, counted from its own beginning.
    using Instant = Duration;
    using Now = std::function<Instant()>;

    /// `now` tells the time of `clock`. Throws std::system_error when the system has no descriptors left.
    QtTimers(clockid_t clock, Now now);

    /// Runs `work` at `due`, and every `period` after it unless that is zero, as a serial queue does it.
    [[nodiscard]] std::unique_ptr<Timer> add(Instant due, Duration period, SerialQueue::Work work);

private:
    class QtTimer;
    /// Deadlines differ by the number of the timer, so that equal ones keep the order they were made in.
    using Deadline = std::pair<Instant, std::uint64_t>;

    void runDue();
    void setAlarm();

    Now now_;
    std::map<Deadline, QtTimer*> timers_;
    std::uint64_t timersMade_ = 0;
    /// Readable when the earliest deadline has come: at once after a suspend that it fell into, and after the
    /// clock was set beyond it.
    QtDescriptor alarm_;
};

}  // namespace corvane
