#pragma once

// Apple's open-source kernel (xnu), mach/kern_return.h: a result code, 0 for success.
typedef int kern_return_t;
#define KERN_SUCCESS 0
