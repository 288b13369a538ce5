#pragma once

#include <mach/port.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source kernel (xnu), mach/mach_init.h: the calling task's own port.
extern mach_port_t mach_task_self_;
#define mach_task_self() mach_task_self_

#ifdef __cplusplus
}
#endif
