#include "platform/macos/DispatchAlarms.h"

#include <algorithm>

#include "platform/macos/MacClock.h"

namespace corvane {

namespace {

/// Strict: an application without windows may otherwise be made to wait longer than the helper is patient.
constexpr unsigned long timerFlags = DISPATCH_TIMER_STRICT;
constexpr std::uint64_t leewayNanoseconds = 0;

std::int64_t nanosecondsLeft(const Alarm& alarm, Duration due) {
    return std::max(due - alarm.now(), Duration::zero()).count();
}

}  // namespace

DispatchTimer::DispatchTimer(dispatch_queue_t queue, void* context, dispatch_function_t handler)
    : source_(dispatch_source_create(DISPATCH_SOURCE_TYPE_TIMER, 0, timerFlags, queue)) {
    dispatch_set_context(source_, context);
    dispatch_source_set_event_handler_f(source_, handler);
    set(DISPATCH_TIME_FOREVER);
    dispatch_resume(source_);
}

DispatchTimer::~DispatchTimer() {
    dispatch_source_cancel(source_);
    dispatch_release(source_);
}

void DispatchTimer::set(dispatch_time_t time) {
    dispatch_source_set_timer(source_, time, DISPATCH_TIME_FOREVER, leewayNanoseconds);
}

BootAlarm::BootAlarm(dispatch_queue_t queue, void* context, dispatch_function_t handler)
    : whileAwake_(queue, context, handler), afterSleep_(queue, context, handler) {}

Duration BootAlarm::now() const {
    return macBootTime().time_since_epoch();
}

void BootAlarm::set(Duration due) {
    const std::int64_t left = nanosecondsLeft(*this, due);
    whileAwake_.set(dispatch_time(DISPATCH_TIME_NOW, left));
    afterSleep_.set(dispatch_walltime(nullptr, left));
}

void BootAlarm::stop() {
    whileAwake_.set(DISPATCH_TIME_FOREVER);
    afterSleep_.set(DISPATCH_TIME_FOREVER);
}

CalendarAlarm::CalendarAlarm(dispatch_queue_t queue, void* context, dispatch_function_t handler)
    : timer_(queue, context, handler) {}

Duration CalendarAlarm::now() const {
    return macWallTime().time_since_epoch();
}

void CalendarAlarm::set(Duration due) {
    timer_.set(dispatch_walltime(nullptr, nanosecondsLeft(*this, due)));
}

void CalendarAlarm::stop() {
    timer_.set(DISPATCH_TIME_FOREVER);
}

}  // namespace corvane
