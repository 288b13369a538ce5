#pragma once

#include "platform/CommandPlatform.h"

namespace corvane {

/// How a write test went.
enum class TestEnd {
    finished,
    interrupted,  ///< by a termination signal; the fans are as they were
    notRestored,  ///< a fan could not be put back, which has been reported
};

// Tests of whether a fan's keys can be written, of a machine that has fan 0 at least. Each holds termination
// signals from before its first write, and puts mode and target of every fan back before it returns, also
// when a signal cuts it short. A test with a speed of its own leaves a machine alone whose fans are faster
// already.

/// Fan 0: which modes and targets stick.
TestEnd runProbes(CommandPlatform& platform);

/// Every fan: 5000 RPM asked for again every 200 ms for 15 s, against firmware that takes fans back.
/// `fanCount` is 1...10.
TestEnd runLoopTest(CommandPlatform& platform, int fanCount);

/// Fan 0: 4000 RPM asked for once, and what it turns at after 4 s.
TestEnd runSpinUpTest(CommandPlatform& platform);

}  // namespace corvane
