#pragma once

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source CoreFoundation (CF), CFString.h.
typedef UInt32 CFStringEncoding;
enum { kCFStringEncodingUTF8 = 0x08000100 };

// Apple's open-source CoreFoundation (CF), CFString.h. A length counts UTF-16 units; a maximum size leaves
// out the ending NUL.
CFTypeID CFStringGetTypeID(void);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean hasByteOrderMark);
CFIndex CFStringGetLength(CFStringRef string);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding encoding);

// Apple's open-source CoreFoundation (CF), CFString.h: a string that is never freed, made by the compiler
// where it knows how.
CFStringRef __CFStringMakeConstantString(const char* text);
#ifdef __APPLE__
#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))
#else
#define CFSTR(text) __CFStringMakeConstantString("" text "")
#endif

#ifdef __cplusplus
}
#endif
