#pragma once

#include <stdint.h>
#include <time.h>

extern "C" {

typedef uint64_t dispatch_time_t;

// Apple's open-source libdispatch, dispatch/time.h.
#define DISPATCH_TIME_NOW (0ULL)
#define DISPATCH_TIME_FOREVER (~0ULL)

// Apple's open-source libdispatch, dispatch/time.h: `delta` in nanoseconds; on the clock that stands still
// while the computer sleeps.
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);

// Apple's open-source libdispatch, dispatch/time.h: on the calendar, from now when `when` is null; follows
// the clock when it is set.
dispatch_time_t dispatch_walltime(const struct timespec* when, int64_t delta);

}  // extern "C"
