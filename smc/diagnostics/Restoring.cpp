#include "smc/diagnostics/Restoring.h"

#include "smc/diagnostics/PrintLine.h"

namespace corvane {

TestEnd restoreAll(CommandPlatform& platform, std::span<FanUnderTest> fans, bool ranThrough) {
    TestEnd end = ranThrough ? TestEnd::finished : TestEnd::interrupted;
    for (FanUnderTest& fan : fans) {
        if (!fan.restore(platform.pause())) {
            printErrorLine(platform.console(), "{} could not be restored: it reads {} instead of {}",
                           fan.modeKey(), fan.mode(), fan.savedMode());
            end = TestEnd::notRestored;
        }
    }
    return end;
}

bool wouldSlowDown(Console& console, std::span<const FanUnderTest> fans, float rpm) {
    for (const FanUnderTest& fan : fans) {
        if (const float demand = fan.demand(); demand > rpm) {
            printErrorLine(console, "Fan {} is at {:.0f} rpm already, this test would slow it down. Skipped.",
                           fan.number(), demand);
            return true;
        }
    }
    return false;
}

}  // namespace corvane
