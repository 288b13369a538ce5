#pragma once

#include <CoreFoundation/CFBase.h>

// Apple's open-source CoreFoundation (CF), CFData.h.
typedef const struct __CFData* CFDataRef;
