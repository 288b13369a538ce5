#pragma once

#include <CoreFoundation/CFString.h>
#include <IOKit/IOKitLib.h>
#include <IOKit/IOReturn.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source IOKit library (IOKitUser), pwr_mgt/IOPMLib.h.
typedef uint32_t IOPMAssertionID;
typedef uint32_t IOPMAssertionLevel;
enum { kIOPMAssertionLevelOn = 255 };

// Apple's open-source IOKit library (IOKitUser), pwr_mgt/IOPMLib.h: a name has at most 128 characters.
IOReturn IOPMAssertionCreateWithName(CFStringRef type, IOPMAssertionLevel level, CFStringRef name,
                                     IOPMAssertionID* id);
IOReturn IOPMAssertionRelease(IOPMAssertionID id);

// Apple's open-source IOKit library (IOKitUser), pwr_mgt/IOPMLib.h: MACH_PORT_NULL when it fails; otherwise
// the connection is the caller's to close, the port to destroy and the notifier to deregister. `reference` is
// what the callback is called with.
io_connect_t IORegisterForSystemPower(void* reference, IONotificationPortRef* port,
                                      IOServiceInterestCallback callback, io_object_t* notifier);
IOReturn IODeregisterForSystemPower(io_object_t* notifier);

// Apple's open-source IOKit library (IOKitUser), pwr_mgt/IOPMLib.h: the answer to "can" and "will" sleep,
// which the system waits for; the identifier is the callback's last argument.
IOReturn IOAllowPowerChange(io_connect_t connection, intptr_t notificationIdentifier);

#ifdef __cplusplus
}
#endif
