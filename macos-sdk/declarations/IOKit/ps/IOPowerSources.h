#pragma once

#include <CoreFoundation/CFArray.h>
#include <CoreFoundation/CFDictionary.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source IOKit library (IOKitUser), ps/IOPowerSources.h: information and list are the caller's
// to release, NULL when there are none. A description belongs to the information and is NULL for an unknown
// source.
CFTypeRef IOPSCopyPowerSourcesInfo(void);
CFArrayRef IOPSCopyPowerSourcesList(CFTypeRef information);
CFDictionaryRef IOPSGetPowerSourceDescription(CFTypeRef information, CFTypeRef source);

#ifdef __cplusplus
}
#endif
