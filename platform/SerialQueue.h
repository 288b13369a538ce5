#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace corvane {

using Duration = std::chrono::nanoseconds;

/// Tag of the clock that never jumps and goes on during suspend. It has no `now`: only a `SerialQueue` tells
/// the time, so that tests can own it.
struct BootClock {
    using rep = Duration::rep;
    using period = Duration::period;
    using duration = Duration;
    using time_point = std::chrono::time_point<BootClock>;
    static constexpr bool is_steady = true;
};

/// Time since an arbitrary point before the process started, suspend included.
using BootTime = BootClock::time_point;

/// Calendar time; jumps when the clock is set.
using WallTime = std::chrono::system_clock::time_point;

/// A running timer. Destroying it cancels it: once destroyed on its queue, its work does not run again. A
/// timer's own work may destroy it.
class Timer {
public:
    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    virtual ~Timer() = default;
};

/// Runs work one piece at a time, in the order it was handed over, and is the only source of time.
///
/// `async` and the clocks may be called from any thread. Timers are created and destroyed on the queue
/// itself, or before its first work and after its last. A queue outlives its timers. Work must not throw.
class SerialQueue {
public:
    using Work = std::function<void()>;

    SerialQueue() = default;
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;
    virtual ~SerialQueue() = default;

    /// Runs `work` later; returns at once.
    virtual void async(Work work) = 0;

    /// Runs `work` after everything handed over before it and returns when it is done. Never called from the
    /// queue's own work.
    virtual void sync(const Work& work) = 0;

    /// Like `sync`, but ahead of all waiting work: after what runs right now and at most one more piece. For
    /// what must not wait for other people's requests.
    virtual void syncAhead(const Work& work) = 0;

    /// Runs `work` once, `delay` (boot time, 0 or more) from now.
    [[nodiscard]] virtual std::unique_ptr<Timer> after(Duration delay, Work work) = 0;

    /// Runs `work` once, as soon as the calendar has reached `time`, wherever the clock is set meanwhile;
    /// soon when it has already. A suspend that it falls into ends it as the computer wakes up.
    [[nodiscard]] virtual std::unique_ptr<Timer> at(WallTime time, Work work) = 0;

    /// Runs `work` `first` from now and then every `period` (more than 0). Deadlines are absolute: a late run
    /// does not shift the next. Runs that were missed (a blocked queue, a suspended machine) are made up for
    /// by one. A due timer does not wait behind a backlog of `async` work.
    [[nodiscard]] virtual std::unique_ptr<Timer> every(Duration first, Duration period, Work work) = 0;

    /// Blocks the queue; called from its own work only. Nothing else runs on it meanwhile.
    virtual void sleep(Duration duration) = 0;

    [[nodiscard]] virtual BootTime bootTime() const = 0;
    [[nodiscard]] virtual WallTime wallTime() const = 0;
};

}  // namespace corvane
