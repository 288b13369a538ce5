#pragma once

// Apple's open-source CoreFoundation (CF), CFDate.h: seconds.
typedef double CFTimeInterval;
