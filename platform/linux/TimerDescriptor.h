#pragma once

#include <ctime>

#include "platform/SerialQueue.h"

namespace corvane {

/// A timer of the kernel on `clock` that is not set yet: a descriptor that is closed on exec and whose reads
/// do not block. Throws std::system_error when the system has none left.
int makeTimerDescriptor(clockid_t clock);

/// Makes the timer readable once its clock has come to `deadline`, counted from the clock's own beginning: at
/// once when it has already.
void setTimerDescriptor(int descriptor, Duration deadline);

/// Stops it; it becomes readable no more, and is not if it was.
void stopTimerDescriptor(int descriptor);

}  // namespace corvane
