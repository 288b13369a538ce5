#pragma once

#include "platform/Console.h"

namespace corvane {

/// Prints what the keys of fan `fan` declare and hold, one line per key.
void printFanKeys(Console& console, int fan);

/// Prints the fan's heading, its keys, and its speeds and mode in words.
void printFanBlock(Console& console, int fan);

/// Prints the fan's speeds, read as `flt `. Those that cannot be read, or are not finite, show 0.0.
void printFanFloats(Console& console, int fan);

}  // namespace corvane
