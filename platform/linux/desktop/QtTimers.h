#pragma once

#include <ctime>
#include <functional>
#include <memory>
#include <utility>

#include "platform/DeadlineTimers.h"
#include "platform/linux/desktop/QtDescriptor.h"

namespace corvane {

/// Timers on one of the system's clocks, which run on the event loop of the thread that made this; they all
/// share one descriptor. That thread only. Outlives its timers.
class QtTimers : private Alarm {
public:
    using Now = std::function<Duration()>;

    /// `now` tells the time of `clock`, counted from the clock's own beginning. Throws std::system_error when
    /// the system has no descriptors left.
    QtTimers(clockid_t clock, Now now);

    /// Runs `work` at `due`, and every `period` after it unless that is zero, as a serial queue does it.
    [[nodiscard]] std::unique_ptr<Timer> add(Duration due, Duration period, SerialQueue::Work work) {
        return timers_.add(due, period, std::move(work));
    }

private:
    [[nodiscard]] Duration now() const override { return now_(); }
    void set(Duration due) override;
    void stop() override;
    void runDue();

    Now now_;
    DeadlineTimers timers_{*this};
    /// Readable when the earliest deadline has come: at once after a suspend that it fell into, and after the
    /// clock was set beyond it.
    QtDescriptor alarm_;
};

}  // namespace corvane
