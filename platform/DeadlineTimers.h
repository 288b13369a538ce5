#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "platform/SerialQueue.h"

namespace corvane {

/// What wakes a serial queue up at a point of one clock. That queue only.
class Alarm {
public:
    Alarm() = default;
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;
    virtual ~Alarm() = default;

    /// What the clock shows, counted from its own beginning.
    [[nodiscard]] virtual Duration now() const = 0;

    /// Goes off when the clock has reached `due`, soon when it has already; replaces what was set. It may go
    /// off too early, and more than once.
    virtual void set(Duration due) = 0;

    /// Does not go off until it is set again.
    virtual void stop() = 0;
};

/// The timers of a serial queue on one clock, which share an alarm. That queue only.
class DeadlineTimers {
public:
    /// `alarm` calls `runDue` as it goes off. It outlives this, which outlives its timers.
    explicit DeadlineTimers(Alarm& alarm) : alarm_(alarm) {}
    DeadlineTimers(const DeadlineTimers&) = delete;
    DeadlineTimers& operator=(const DeadlineTimers&) = delete;
    ~DeadlineTimers() = default;

    /// Runs `work` at `due`, and every `period` after it unless that is zero, as a serial queue does it.
    [[nodiscard]] std::unique_ptr<Timer> add(Duration due, Duration period, SerialQueue::Work work);

    /// Runs what is due, each piece of work once, and sets the alarm for what comes next.
    void runDue();

private:
    class DeadlineTimer;
    /// Deadlines differ by the number of the timer, so that equal ones keep the order they were made in.
    using Deadline = std::pair<Duration, std::uint64_t>;

    void setAlarm();

    Alarm& alarm_;
    std::map<Deadline, DeadlineTimer*> timers_;
    std::uint64_t timersMade_ = 0;
};

}  // namespace corvane
