// What libraries ask about the system's version. From Apple's open-source AvailabilityVersions; the newest
// version that these declarations know is the oldest that Corvane runs on.
#pragma once

#define __MAC_10_15 101500
#define __MAC_11_0 110000
#define __MAC_12_0 120000
#define __MAC_13_0 130000
#define __MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__
#define __MAC_OS_X_VERSION_MAX_ALLOWED __MAC_13_0

#define API_AVAILABLE(...)
#define API_UNAVAILABLE(...)
