#include <limits>
#include <string>
#include <vector>

#include "smc/diagnostics/diagnostics.h"
#include "tests/diagnostics/DiagnosticsFixture.h"

namespace corvane {
namespace {

int diag(DiagnosticsPlatform& platform, std::vector<std::string> arguments = {}) {
    arguments.insert(arguments.begin(), "--diag");
    return runDiag(platform, arguments);
}

constexpr const char* tinyBlock =
    "\n"
    "--- Fan 0\n"
    "  F0Ac: size=4 type=flt  attrs=0x85  bytes=[00 00 00 00]  0.00\n"
    "  F0Mn: size=4 type=flt  attrs=0x84  bytes=[00 00 7a 44]  1000.00\n"
    "  F0Mx: size=4 type=flt  attrs=0x84  bytes=[00 40 9c 45]  5000.00\n"
    "  F0Tg: size=4 type=flt  attrs=0xd4  bytes=[00 00 00 00]  0.00\n"
    "  F0Md: size=1 type=ui8  attrs=0xd0  bytes=[00]  0\n"
    "Ac (current) = 0.0 rpm ok=true\n"
    "Mn (min)     = 1000.0\n"
    "Mx (max)     = 5000.0\n"
    "Tg (target)  = 0.0\n"
    "Md (mode)    = 0\n";

TEST(Diag, EndsWithAHintForAnyoneButRoot) {
    DiagnosticsPlatform platform;
    platform.root = false;
    EXPECT_EQ(diag(platform, {"loop"}), 0);
    EXPECT_EQ(platform.recording.output, std::string("=== Switchyard SMC Diagnostics ===\n"
                                                     "running as root: false\n"
                                                     "FNum (fan count) = 1  ok=true\n") +
                                             tinyBlock +
                                             "\n"
                                             "=== Reads as float (correct type for ASi) ===\n"
                                             "  F0Ac = 0.0  ok=true\n"
                                             "  F0Mn = 1000.0  ok=true\n"
                                             "  F0Mx = 5000.0  ok=true\n"
                                             "  F0Tg = 0.0  ok=true\n"
                                             "Re-run with: sudo corvane --diag [probe|loop]\n");
    EXPECT_EQ(platform.recording.errors, "");
    EXPECT_EQ(platform.machine.mac.writeCount(), 0U);
}

TEST(Diag, ShowsTheWriteTestTheFloatsAndTheFinalStateToRoot) {
    DiagnosticsPlatform platform;
    platform.machine.mac.holdSensor("F0Ac", 1234.56F);
    EXPECT_EQ(diag(platform), 0);
    EXPECT_EQ(platform.recording.output,
              "=== Switchyard SMC Diagnostics ===\n"
              "running as root: true\n"
              "FNum (fan count) = 1  ok=true\n"
              "\n"
              "--- Fan 0\n"
              "  F0Ac: size=4 type=flt  attrs=0x85  bytes=[ec 51 9a 44]  1234.56\n"
              "  F0Mn: size=4 type=flt  attrs=0x84  bytes=[00 00 7a 44]  1000.00\n"
              "  F0Mx: size=4 type=flt  attrs=0x84  bytes=[00 40 9c 45]  5000.00\n"
              "  F0Tg: size=4 type=flt  attrs=0xd4  bytes=[00 00 00 00]  0.00\n"
              "  F0Md: size=1 type=ui8  attrs=0xd0  bytes=[00]  0\n"
              "Ac (current) = 1234.6 rpm ok=true\n"
              "Mn (min)     = 1000.0\n"
              "Mx (max)     = 5000.0\n"
              "Tg (target)  = 0.0\n"
              "Md (mode)    = 0\n"
              "\n"
              "=== Write test: F0Md=1 (forced) + F0Tg=4000 ===\n"
              "  Saving original: F0Md=0\n"
              "  csmc_write_u8(F0Md, 1) rc=0\n"
              "  csmc_write_flt(F0Tg, 4000) rc=0\n"
              "  Waiting 4 seconds for fans to spin up...\n"
              "  F0Ac (current) =1234.6 rpm  <-- if this jumped, write WORKED\n"
              "  Restored F0Md=0\n"
              "\n"
              "=== Reads as float (correct type for ASi) ===\n"
              "  F0Ac = 1234.6  ok=true\n"
              "  F0Mn = 1000.0  ok=true\n"
              "  F0Mx = 5000.0  ok=true\n"
              "  F0Tg = 0.0  ok=true\n"
              "\n"
              "=== Final state ===\n"
              "  F0Ac: size=4 type=flt  attrs=0x85  bytes=[ec 51 9a 44]  1234.56\n"
              "  F0Mn: size=4 type=flt  attrs=0x84  bytes=[00 00 7a 44]  1000.00\n"
              "  F0Mx: size=4 type=flt  attrs=0x84  bytes=[00 40 9c 45]  5000.00\n"
              "  F0Tg: size=4 type=flt  attrs=0xd4  bytes=[00 00 00 00]  0.00\n"
              "  F0Md: size=1 type=ui8  attrs=0xd0  bytes=[00]  0\n");
    EXPECT_EQ(platform.recording.errors, "");
}

TEST(Diag, AbortsWithStatus1WithoutAController) {
    DiagnosticsPlatform platform;
    platform.machine.mac.setSmcPresent(false);
    EXPECT_EQ(diag(platform), 1);
    EXPECT_EQ(platform.recording.output, "=== Switchyard SMC Diagnostics ===\nrunning as root: true\n");
    EXPECT_EQ(platform.recording.errors, "SMC service not reachable. Aborting.\n");
}

TEST(Diag, TestsNothingOnAMachineWithoutFans) {
    for (const char* test : {"", "probe", "loop"}) {
        DiagnosticsPlatform platform(macBookAir());
        EXPECT_EQ(diag(platform, {test}), 0);
        EXPECT_EQ(platform.recording.output,
                  "=== Switchyard SMC Diagnostics ===\n"
                  "running as root: true\n"
                  "FNum (fan count) = 0  ok=true\n"
                  "\n"
                  "=== Reads as float (correct type for ASi) ===\n"
                  "\n"
                  "=== Final state ===\n");
        EXPECT_EQ(platform.machine.mac.writeCount(), 0U);
    }
}

TEST(Diag, SaysSoWhenTheFanCountCannotBeRead) {
    DiagnosticsPlatform platform;
    platform.machine.mac.setFault("FNum", KeyFault::readFails());
    EXPECT_EQ(diag(platform), 0);
    EXPECT_NE(platform.recording.output.find("FNum (fan count) = 0  ok=false\n\n=== Reads"),
              std::string::npos);
    EXPECT_EQ(platform.machine.mac.writeCount(), 0U);
}

TEST(Diag, LooksAtTenFansAtMost) {
    DiagnosticsPlatform platform;
    platform.root = false;
    platform.machine.mac.holdSensor("FNum", 255.0F);
    EXPECT_EQ(diag(platform), 0);
    EXPECT_NE(platform.recording.output.find("FNum (fan count) = 255  ok=true\n"), std::string::npos);
    EXPECT_EQ(occurrences(platform.recording.output, "--- Fan "), 10);
    EXPECT_NE(platform.recording.output.find("  F9Ac: no info (rc=132)\n"), std::string::npos);
}

TEST(Diag, ShowsThatAMachineHasNoUpperCaseModeKey) {
    DiagnosticsPlatform platform(macBookPro14M5());
    platform.recordWrites();
    EXPECT_EQ(diag(platform), 0);
    EXPECT_NE(platform.recording.output.find("  F0Md: no info (rc=132)\nAc (current) = "), std::string::npos);
    EXPECT_NE(platform.recording.output.find("Md (mode)    = 0\n"), std::string::npos);
    EXPECT_NE(platform.recording.output.find("  csmc_write_u8(F0Md, 1) rc=132\n"), std::string::npos);
    EXPECT_NE(platform.recording.output.find("  Restored F0Md=0\n"), std::string::npos);
    EXPECT_EQ(platform.recording.errors, "");
    EXPECT_FALSE(platform.machine.mac.isAnyFanForced());
}

TEST(Diag, CountsWhatIsNotFiniteAsNotRead) {
    DiagnosticsPlatform platform;
    platform.root = false;
    platform.machine.mac.holdSensor("F0Ac", std::numeric_limits<float>::infinity());
    platform.machine.mac.holdSensor("F0Mn", std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(diag(platform), 0);
    EXPECT_NE(platform.recording.output.find("bytes=[00 00 80 7f]  inf\n"), std::string::npos);
    EXPECT_NE(platform.recording.output.find("Ac (current) = 0.0 rpm ok=false\nMn (min)     = 0.0\n"),
              std::string::npos);
    EXPECT_NE(platform.recording.output.find("  F0Ac = 0.0  ok=false\n  F0Mn = 0.0  ok=false\n"),
              std::string::npos);
}

TEST(Diag, SaysWhenAKeyHasAnInfoButNoValue) {
    DiagnosticsPlatform platform;
    platform.root = false;
    platform.machine.mac.setFault("F0Tg", KeyFault::readFails());
    EXPECT_EQ(diag(platform), 0);
    EXPECT_NE(platform.recording.output.find(
                  "  F0Tg: size=4 type=flt  attrs=0xd4  bytes=[]  not readable (rc=133)\n"),
              std::string::npos);
}

TEST(Diag, HasExactlyOneEmptyLineBeforeEachHeading) {
    for (const char* test : {"", "probe", "loop"}) {
        DiagnosticsPlatform platform(macBookPro16());
        EXPECT_EQ(diag(platform, {test}), 0);
        const std::string& output = platform.recording.output;
        EXPECT_EQ(occurrences(output, "\n==="), occurrences(output, "\n\n===")) << output;
        EXPECT_EQ(occurrences(output, "\n---"), occurrences(output, "\n\n---")) << output;
        EXPECT_EQ(occurrences(output, "\n\n\n"), 0) << output;
        EXPECT_EQ(occurrences(output, "\n--- Fan "), 2) << output;
    }
}

TEST(Diag, RunsTheTestTheSecondArgumentChooses) {
    const std::vector<std::pair<std::string, std::string>> headings = {
        {"probe", "\n=== MODE WRITE PROBE ===\n"},
        {"loop", "\n=== AGGRESSIVE LOOP TEST (Md=1 + Tg=5000 every 200ms for 15s) ===\n"},
        {"Loop", "\n=== Write test: F0Md=1 (forced) + F0Tg=4000 ===\n"},
        {"other", "\n=== Write test: F0Md=1 (forced) + F0Tg=4000 ===\n"},
    };
    for (const auto& [argument, heading] : headings) {
        DiagnosticsPlatform platform;
        EXPECT_EQ(diag(platform, {argument, "probe"}), 0);
        EXPECT_NE(platform.recording.output.find(heading), std::string::npos) << argument;
    }
}

TEST(Diag, EndsWithStatus130AfterASignalWithTheFanRestored) {
    for (const char* test : {"", "probe", "loop"}) {
        DiagnosticsPlatform platform;
        platform.pauses.signalAfter(std::chrono::milliseconds(300));
        EXPECT_EQ(diag(platform, {test}), interruptedStatus) << test;
        EXPECT_FALSE(platform.machine.mac.isAnyFanForced()) << test;
        EXPECT_EQ(platform.recording.output.find("=== Final state"), std::string::npos);
    }
}

TEST(Diag, EndsWithStatus1WhenAFanDoesNotComeBack) {
    DiagnosticsPlatform platform;
    platform.machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1));
    platform.machine.mac.holdSensor("F0Tg", 0.0F);
    // It reads automatic at first, then whatever it is.
    platform.machine.mac.holdSensor("F0Md", 0.0F);
    platform.pauses.at(std::chrono::seconds(1), [&] { platform.machine.mac.releaseSensor("F0Md"); });
    EXPECT_EQ(diag(platform), 1);
    EXPECT_EQ(platform.recording.errors, "F0Md could not be restored: it reads 1 instead of 0\n");
    EXPECT_NE(platform.recording.output.find("  Restored F0Md=1\n"), std::string::npos);
    EXPECT_NE(platform.recording.output.find("=== Final state ===\n"), std::string::npos);
}

}  // namespace
}  // namespace corvane
