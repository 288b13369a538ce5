#pragma once

#include <dispatch/queue.h>
#include <dispatch/time.h>
#include <stdint.h>

DISPATCH_DECL(dispatch_source);

extern "C" {

typedef const struct dispatch_source_type_s* dispatch_source_type_t;

// Apple's open-source libdispatch, dispatch/source.h: the mask of a timer may be DISPATCH_TIMER_STRICT, the
// handle of a signal source is the signal's number.
extern const struct dispatch_source_type_s _dispatch_source_type_timer;
extern const struct dispatch_source_type_s _dispatch_source_type_signal;
#define DISPATCH_SOURCE_TYPE_TIMER (&_dispatch_source_type_timer)
#define DISPATCH_SOURCE_TYPE_SIGNAL (&_dispatch_source_type_signal)
#define DISPATCH_TIMER_STRICT 0x1UL

// Apple's open-source libdispatch, dispatch/source.h: the source is the caller's to release.
dispatch_source_t dispatch_source_create(dispatch_source_type_t type, uintptr_t handle, uintptr_t mask,
                                         dispatch_queue_t queue);
void dispatch_source_set_event_handler_f(dispatch_source_t source, dispatch_function_t handler);

// Apple's open-source libdispatch, dispatch/source.h: runs once on the queue when the kernel knows of the
// source.
void dispatch_source_set_registration_handler_f(dispatch_source_t source, dispatch_function_t handler);

// Apple's open-source libdispatch, dispatch/source.h: no handler begins any more when this is called on the
// queue.
void dispatch_source_cancel(dispatch_source_t source);

// Apple's open-source libdispatch, dispatch/source.h: for a signal, how often it arrived since the last
// event.
uintptr_t dispatch_source_get_data(dispatch_source_t source);

// Apple's open-source libdispatch, dispatch/source.h: interval and leeway in nanoseconds,
// DISPATCH_TIME_FOREVER as the interval for once.
void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, uint64_t interval,
                               uint64_t leeway);

}  // extern "C"
