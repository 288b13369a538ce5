#pragma once

#include <mach/port.h>

// Apple's open-source IOKit library (IOKitUser), IOTypes.h: objects are names of ports.
typedef mach_port_t io_object_t;
typedef io_object_t io_connect_t;
typedef io_object_t io_service_t;
#define IO_OBJECT_NULL ((io_object_t)0)
