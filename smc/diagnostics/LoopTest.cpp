#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "smc/diagnostics/FanUnderTest.h"
#include "smc/diagnostics/PrintLine.h"
#include "smc/diagnostics/Restoring.h"
#include "smc/diagnostics/WriteTests.h"

namespace corvane {

namespace {

constexpr float testRpm = 5000.0F;
constexpr Duration period = std::chrono::milliseconds(200);
constexpr Duration length = std::chrono::seconds(15);

std::vector<FanUnderTest> fansUnderTest(int count) {
    std::vector<FanUnderTest> fans;
    for (int fan = 0; fan < count; ++fan) {
        fans.emplace_back(fan);
    }
    return fans;
}

void force(std::vector<FanUnderTest>& fans) {
    for (FanUnderTest& fan : fans) {
        fan.writeMode(FanUnderTest::forcedMode);
        fan.writeTarget(testRpm);
    }
}

/// Of the first two fans, or of the only one.
void printState(Console& console, Duration elapsed, const std::vector<FanUnderTest>& fans) {
    const double seconds = std::chrono::duration<double>(elapsed).count();
    std::string line = fmt::format("  T+{:4.1f}s  F0: Ac={:.0f} Tg={:.0f} Md={}", seconds, fans[0].speed(),
                                   fans[0].target(), fans[0].mode());
    if (fans.size() > 1) {
        line += fmt::format(" | F1: Ac={:.0f} Md={}", fans[1].speed(), fans[1].mode());
    }
    printLine(console, "{}", line);
}

/// False when a termination signal has cut it short.
bool keepForcing(CommandPlatform& platform, std::vector<FanUnderTest>& fans) {
    InterruptiblePause& pause = platform.pause();
    const BootTime start = pause.bootTime();
    for (Duration due = Duration::zero(); due < length; due += period) {
        force(fans);
        printState(platform.console(), pause.bootTime() - start, fans);
        const Duration left = start + due + period - pause.bootTime();
        if (!pause.pause(std::max(left, Duration::zero()))) {
            return false;
        }
    }
    return true;
}

}  // namespace

TestEnd runLoopTest(CommandPlatform& platform, int fanCount) {
    Console& console = platform.console();
    printLine(console, "\n=== AGGRESSIVE LOOP TEST (Md=1 + Tg=5000 every 200ms for 15s) ===");
    std::vector<FanUnderTest> fans = fansUnderTest(fanCount);
    if (wouldSlowDown(console, fans, testRpm)) {
        return TestEnd::finished;
    }

    platform.pause().holdTerminationSignals();
    const bool ranThrough = keepForcing(platform, fans);
    printLine(console, "Restoring originals");
    return restoreAll(platform, fans, ranThrough);
}

}  // namespace corvane
