#pragma once

// Apple's open-source kernel (xnu), mach/arm/boolean.h: an int, unlike on Intel.
typedef int boolean_t;
