#pragma once

#include "platform/SerialQueue.h"

namespace corvane {

/// The kernel's continuous clock: goes on while the computer sleeps, never jumps. Any thread.
BootTime macBootTime();

/// The calendar. Any thread.
WallTime macWallTime();

/// Blocks this thread; time that the computer sleeps is not counted.
void macSleep(Duration duration);

}  // namespace corvane
