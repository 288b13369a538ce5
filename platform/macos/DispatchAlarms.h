#pragma once

#include <dispatch/dispatch.h>

#include "platform/DeadlineTimers.h"

namespace corvane {

/// A timer of Dispatch on one queue. Made anywhere, destroyed on that queue.
class DispatchTimer {
public:
    /// Calls `handler` with `context` on `queue` as it fires, and no more once this is destroyed.
    DispatchTimer(dispatch_queue_t queue, void* context, dispatch_function_t handler);
    DispatchTimer(const DispatchTimer&) = delete;
    DispatchTimer& operator=(const DispatchTimer&) = delete;
    ~DispatchTimer();

    /// Fires once at `time`, in place of what was set; never at DISPATCH_TIME_FOREVER.
    void set(dispatch_time_t time);

private:
    dispatch_source_t source_;
};

/// An alarm on the continuous clock. Dispatch has timers on the clock that stands still while the computer
/// sleeps and on the calendar, but none on this one. So there is one of each: the first is exact as long as
/// nothing sleeps, the second goes off as the computer wakes up, and whichever comes too early is set again.
/// Only a calendar that is set back during a sleep makes it late, by the length of that sleep at most.
class BootAlarm final : public Alarm {
public:
    BootAlarm(dispatch_queue_t queue, void* context, dispatch_function_t handler);

    [[nodiscard]] Duration now() const override;
    void set(Duration due) override;
    void stop() override;

private:
    DispatchTimer whileAwake_;
    DispatchTimer afterSleep_;
};

/// An alarm on the calendar, which Dispatch moves when the clock is set.
class CalendarAlarm final : public Alarm {
public:
    CalendarAlarm(dispatch_queue_t queue, void* context, dispatch_function_t handler);

    [[nodiscard]] Duration now() const override;
    void set(Duration due) override;
    void stop() override;

private:
    DispatchTimer timer_;
};

}  // namespace corvane
