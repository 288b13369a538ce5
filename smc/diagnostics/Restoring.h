#pragma once

#include <span>

#include "platform/CommandPlatform.h"
#include "smc/diagnostics/FanUnderTest.h"
#include "smc/diagnostics/WriteTests.h"

namespace corvane {

/// Restores every fan and reports, on standard error, each that does not come back. `ranThrough` is false
/// when a termination signal has cut the test short.
TestEnd restoreAll(CommandPlatform& platform, std::span<FanUnderTest> fans, bool ranThrough);

/// True when a fan is faster already than `rpm`, at which a test would slow it down; says so on standard
/// error.
bool wouldSlowDown(Console& console, std::span<const FanUnderTest> fans, float rpm);

}  // namespace corvane
