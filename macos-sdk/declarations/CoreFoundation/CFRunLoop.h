#pragma once

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source CoreFoundation (CF), CFRunLoop.h: the main thread's loop empties Dispatch's main queue,
// too.
typedef struct __CFRunLoop* CFRunLoopRef;
CFRunLoopRef CFRunLoopGetMain(void);

// Apple's open-source CoreFoundation (CF), CFRunLoop.h: the calling thread's, until it is stopped.
void CFRunLoopRun(void);
void CFRunLoopStop(CFRunLoopRef loop);

// Apple's open-source CoreFoundation (CF), CFRunLoop.h: the loop holds a source until that is invalidated.
typedef struct __CFRunLoopSource* CFRunLoopSourceRef;
typedef CFStringRef CFRunLoopMode;
extern const CFRunLoopMode kCFRunLoopCommonModes;
void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode);

#ifdef __cplusplus
}
#endif
