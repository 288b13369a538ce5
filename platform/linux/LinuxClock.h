#pragma once

#include "platform/SerialQueue.h"

namespace corvane {

/// CLOCK_BOOTTIME: goes on during suspend, never jumps.
BootTime linuxBootTime();

/// CLOCK_REALTIME.
WallTime linuxWallTime();

}  // namespace corvane
