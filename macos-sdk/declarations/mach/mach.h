#pragma once

#include <mach/boolean.h>
#include <mach/kern_return.h>
#include <mach/mach_init.h>
#include <mach/mach_time.h>
#include <mach/message.h>
#include <mach/port.h>
