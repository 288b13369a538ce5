#pragma once

#include <mach/kern_return.h>
#include <stdint.h>
#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source kernel (xnu), mach/mach_time.h: a tick lasts numer/denom nanoseconds.
struct mach_timebase_info {
    uint32_t numer;
    uint32_t denom;
};
typedef struct mach_timebase_info* mach_timebase_info_t;
typedef struct mach_timebase_info mach_timebase_info_data_t;
kern_return_t mach_timebase_info(mach_timebase_info_t info);

// Apple's open-source kernel (xnu), mach/mach_time.h: ticks. The first clock stands still while the computer
// sleeps, the second goes on.
uint64_t mach_absolute_time(void);
uint64_t mach_continuous_time(void);

// Apple's open-source kernel (xnu), mach/mach_time.h: both clocks and the calendar at one moment.
kern_return_t mach_get_times(uint64_t* absoluteTime, uint64_t* continuousTime, struct timespec* calendar);

// Apple's open-source kernel (xnu), mach/mach_time.h: until the first clock shows `deadline`.
kern_return_t mach_wait_until(uint64_t deadline);

#ifdef __cplusplus
}
#endif
