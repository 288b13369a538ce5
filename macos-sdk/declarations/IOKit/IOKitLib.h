#pragma once

#include <CoreFoundation/CFDictionary.h>
#include <IOKit/IOReturn.h>
#include <IOKit/IOTypes.h>
#include <mach/mach_init.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

// Public documentation (IOKitLib.h), since macOS 12.
extern const mach_port_t kIOMainPortDefault;

// Apple's open-source IOKit library (IOKitUser), IOKitLib.h: NULL when out of memory, otherwise the caller's
// to release.
CFMutableDictionaryRef IOServiceMatching(const char* className);

// Apple's open-source IOKit library (IOKitUser), IOKitLib.h: releases `matching`. The service is the caller's
// to release, IO_OBJECT_NULL when none matches.
io_service_t IOServiceGetMatchingService(mach_port_t mainPort, CFDictionaryRef matching);
kern_return_t IOObjectRelease(io_object_t object);

// Apple's open-source IOKit library (IOKitUser), IOKitLib.h: a connection is the caller's to close.
kern_return_t IOServiceOpen(io_service_t service, task_port_t owningTask, uint32_t type,
                            io_connect_t* connection);
kern_return_t IOServiceClose(io_connect_t connection);

// Apple's open-source IOKit library (IOKitUser), IOKitLib.h: `outputSize` is the room for the answer, then
// its size.
kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector, const void* input,
                                        size_t inputSize, void* output, size_t* outputSize);

// Apple's open-source IOKit library (IOKitUser), IOKitLib.h: what notices arrive by, here on a queue of
// Dispatch's.
typedef struct IONotificationPort* IONotificationPortRef;
typedef void (*IOServiceInterestCallback)(void* reference, io_service_t service, uint32_t messageType,
                                          void* messageArgument);
void IONotificationPortSetDispatchQueue(IONotificationPortRef port, struct dispatch_queue_s* queue);
void IONotificationPortDestroy(IONotificationPortRef port);

#ifdef __cplusplus
}
#endif
