#pragma once

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source CoreFoundation (CF), CFNumber.h: a Boolean is a type of its own, with two objects.
typedef const struct __CFBoolean* CFBooleanRef;
CFTypeID CFBooleanGetTypeID(void);
Boolean CFBooleanGetValue(CFBooleanRef boolean);

// Apple's open-source CoreFoundation (CF), CFNumber.h.
typedef const struct __CFNumber* CFNumberRef;
typedef CFIndex CFNumberType;
enum { kCFNumberIntType = 9 };
CFTypeID CFNumberGetTypeID(void);

// Apple's open-source CoreFoundation (CF), CFNumber.h: false when the number does not fit the type without
// loss.
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);

#ifdef __cplusplus
}
#endif
