#pragma once

// Apple's open-source kernel (xnu), mach/port.h: names of ports are 32-bit numbers, 0 for none.
typedef unsigned int natural_t;
typedef natural_t mach_port_t;
typedef mach_port_t task_port_t;
