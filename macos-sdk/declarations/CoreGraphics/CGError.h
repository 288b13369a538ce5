#pragma once

#include <stdint.h>

// Public documentation (Core Graphics, CGError).
enum CGError : int32_t {
    kCGErrorSuccess = 0,
    kCGErrorFailure = 1000,
    kCGErrorIllegalArgument = 1001,
};
typedef enum CGError CGError;
