#pragma once

#include <CoreGraphics/CGError.h>
#include <mach/boolean.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Public documentation (Quartz Display Services): with no list, `count` becomes the number there are;
// otherwise the number that was filled in.
typedef uint32_t CGDirectDisplayID;
CGError CGGetOnlineDisplayList(uint32_t maximum, CGDirectDisplayID* displays, uint32_t* count);

// Public documentation (Quartz Display Services).
boolean_t CGDisplayIsBuiltin(CGDirectDisplayID display);

#ifdef __cplusplus
}
#endif
