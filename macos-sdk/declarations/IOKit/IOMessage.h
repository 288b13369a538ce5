#pragma once

#include <IOKit/IOReturn.h>

// Apple's open-source kernel (xnu), IOKit/IOMessage.h: what a change of the computer's power is told by.
#define iokit_common_msg(message) ((uint32_t)(0xE0000000U | (message)))
#define kIOMessageCanSystemSleep iokit_common_msg(0x270)
#define kIOMessageSystemWillSleep iokit_common_msg(0x280)
#define kIOMessageSystemHasPoweredOn iokit_common_msg(0x300)
