#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFData.h>
#include <CoreFoundation/CFDate.h>
#include <CoreFoundation/CFRunLoop.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source CoreFoundation (CF), CFMessagePort.h: what a request comes to.
typedef struct __CFMessagePort* CFMessagePortRef;
enum {
    kCFMessagePortSuccess = 0,
    kCFMessagePortSendTimeout = -1,
    kCFMessagePortReceiveTimeout = -2,
    kCFMessagePortIsInvalid = -3,
};

// Apple's open-source CoreFoundation (CF), CFMessagePort.h: the context is copied; none of its functions need
// be there.
typedef struct {
    CFIndex version;
    void* info;
    const void* (*retain)(const void* info);
    void (*release)(const void* info);
    CFStringRef (*copyDescription)(const void* info);
} CFMessagePortContext;

// Apple's open-source CoreFoundation (CF), CFMessagePort.h: answers a message; NULL is an answer without
// contents.
typedef CFDataRef (*CFMessagePortCallBack)(CFMessagePortRef local, SInt32 identifier, CFDataRef data,
                                           void* info);

// Apple's open-source CoreFoundation (CF), CFMessagePort.h: NULL when another process has the name, and when
// it cannot be had. The name is free again when the port is invalidated, and when the process ends.
CFMessagePortRef CFMessagePortCreateLocal(CFAllocatorRef allocator, CFStringRef name,
                                          CFMessagePortCallBack callout, CFMessagePortContext* context,
                                          Boolean* shouldFreeInfo);

// Apple's open-source CoreFoundation (CF), CFMessagePort.h: NULL when no process has the name.
CFMessagePortRef CFMessagePortCreateRemote(CFAllocatorRef allocator, CFStringRef name);

// Apple's open-source CoreFoundation (CF), CFMessagePort.h: nothing more is received.
void CFMessagePortInvalidate(CFMessagePortRef port);

// Apple's open-source CoreFoundation (CF), CFMessagePort.h: waits for the answer in the run loop's mode of
// that name, NULL: not at all. Times in seconds.
SInt32 CFMessagePortSendRequest(CFMessagePortRef remote, SInt32 identifier, CFDataRef data,
                                CFTimeInterval sendTimeout, CFTimeInterval receiveTimeout,
                                CFStringRef replyMode, CFDataRef* returnData);

// Apple's open-source CoreFoundation (CF), CFMessagePort.h: what a run loop receives messages by.
CFRunLoopSourceRef CFMessagePortCreateRunLoopSource(CFAllocatorRef allocator, CFMessagePortRef local,
                                                    CFIndex order);

#ifdef __cplusplus
}
#endif
