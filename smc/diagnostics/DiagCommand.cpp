#include <algorithm>
#include <cstdint>
#include <string_view>

#include "smc/SmcSession.h"
#include "smc/csmc.h"
#include "smc/diagnostics/FanKey.h"
#include "smc/diagnostics/FanReport.h"
#include "smc/diagnostics/PrintLine.h"
#include "smc/diagnostics/WriteTests.h"
#include "smc/diagnostics/diagnostics.h"

namespace corvane {

namespace {

constexpr int failedStatus = 1;

/// Prints the number of fans and answers how many of them can be addressed.
int reportFanCount(Console& console) {
    std::uint8_t ok = 0;
    const int count = csmc_read_u8("FNum", &ok);
    printLine(console, "FNum (fan count) = {}  ok={}", count, ok != 0);
    return std::min(count, mostFans);
}

void printFloats(Console& console, int fanCount) {
    printLine(console, "\n=== Reads as float (correct type for ASi) ===");
    for (int fan = 0; fan < fanCount; ++fan) {
        printFanFloats(console, fan);
    }
}

void printFinalState(Console& console, int fanCount) {
    printLine(console, "\n=== Final state ===");
    for (int fan = 0; fan < fanCount; ++fan) {
        printFanKeys(console, fan);
    }
}

TestEnd runWriteTest(CommandPlatform& platform, std::string_view choice, int fanCount) {
    if (fanCount == 0) {
        return TestEnd::finished;
    }
    if (choice == "probe") {
        return runProbes(platform);
    }
    return choice == "loop" ? runLoopTest(platform, fanCount) : runSpinUpTest(platform);
}

}  // namespace

int runDiag(CommandPlatform& platform, std::span<const std::string> arguments) {
    const SmcSession session(platform.makeSmcConnection());
    Console& console = platform.console();
    printLine(console, "=== Switchyard SMC Diagnostics ===");
    printLine(console, "running as root: {}", platform.isRoot());
    if (csmc_open() != 0) {
        printErrorLine(console, "SMC service not reachable. Aborting.");
        return failedStatus;
    }

    const int fanCount = reportFanCount(console);
    for (int fan = 0; fan < fanCount; ++fan) {
        printFanBlock(console, fan);
    }
    if (!platform.isRoot()) {
        printFloats(console, fanCount);
        printLine(console, "Re-run with: sudo corvane --diag [probe|loop]");
        return 0;
    }

    const std::string_view choice = arguments.size() > 1 ? std::string_view(arguments[1]) : "";
    const TestEnd end = runWriteTest(platform, choice, fanCount);
    if (end == TestEnd::interrupted) {
        return interruptedStatus;
    }
    printFloats(console, fanCount);
    printFinalState(console, fanCount);
    return end == TestEnd::finished ? 0 : failedStatus;
}

}  // namespace corvane
