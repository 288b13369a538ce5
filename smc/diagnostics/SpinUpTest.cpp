#include <chrono>

#include "smc/diagnostics/FanUnderTest.h"
#include "smc/diagnostics/PrintLine.h"
#include "smc/diagnostics/Restoring.h"
#include "smc/diagnostics/WriteTests.h"

namespace corvane {

namespace {

constexpr float testRpm = 4000.0F;
constexpr Duration spinUpTime = std::chrono::seconds(4);

}  // namespace

TestEnd runSpinUpTest(CommandPlatform& platform) {
    Console& console = platform.console();
    printLine(console, "\n=== Write test: F0Md=1 (forced) + F0Tg=4000 ===");
    FanUnderTest fan(0);
    if (wouldSlowDown(console, {&fan, 1}, testRpm)) {
        return TestEnd::finished;
    }

    platform.pause().holdTerminationSignals();
    printLine(console, "  Saving original: F0Md={}", fan.savedMode());
    printLine(console, "  csmc_write_u8(F0Md, 1) rc={}", fan.writeMode(FanUnderTest::forcedMode));
    printLine(console, "  csmc_write_flt(F0Tg, 4000) rc={}", fan.writeTarget(testRpm));
    printLine(console, "  Waiting 4 seconds for fans to spin up...");
    const bool ranThrough = platform.pause().pause(spinUpTime);
    if (ranThrough) {
        printLine(console, "  F0Ac (current) ={:.1f} rpm  <-- if this jumped, write WORKED", fan.speed());
    }
    const TestEnd end = restoreAll(platform, {&fan, 1}, ranThrough);
    printLine(console, "  Restored F0Md={}", fan.mode());
    return end;
}

}  // namespace corvane
