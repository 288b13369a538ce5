#pragma once

#include <MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source CoreFoundation (CF), CFBase.h: sizes are those of 64-bit programs.
typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef long CFIndex;
typedef const void* CFTypeRef;

// Apple's open-source CoreFoundation (CF), CFBase.h.
typedef const struct __CFAllocator* CFAllocatorRef;
extern const CFAllocatorRef kCFAllocatorDefault;

// Apple's open-source CoreFoundation (CF), CFBase.h: declared there for all headers.
typedef const struct __CFString* CFStringRef;

// Apple's open-source CoreFoundation (CF), CFBase.h: none of these takes NULL.
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);

#ifdef __cplusplus
}
#endif
