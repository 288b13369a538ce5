#pragma once

#include <mach/kern_return.h>

typedef kern_return_t IOReturn;

// Apple's open-source kernel (xnu), IOKit/IOReturn.h: IOKit's own codes lie above 0xE0000000.
#define iokit_common_err(code) ((IOReturn)(0xE0000000U | (code)))
#define kIOReturnSuccess KERN_SUCCESS
#define kIOReturnNoDevice iokit_common_err(0x2C0)
#define kIOReturnNotPrivileged iokit_common_err(0x2C1)
#define kIOReturnBadArgument iokit_common_err(0x2C2)
#define kIOReturnUnderrun iokit_common_err(0x2E7)
#define kIOReturnNotFound iokit_common_err(0x2F0)
