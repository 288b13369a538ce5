#pragma once

// Apple's open-source kernel (xnu), mach/message.h: what a message to no port ends with.
#define MACH_SEND_INVALID_DEST 0x10000003
