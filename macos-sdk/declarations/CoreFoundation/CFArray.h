#pragma once

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source CoreFoundation (CF), CFArray.h: elements are borrowed.
typedef const struct __CFArray* CFArrayRef;
CFTypeID CFArrayGetTypeID(void);
CFIndex CFArrayGetCount(CFArrayRef array);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

#ifdef __cplusplus
}
#endif
