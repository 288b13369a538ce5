#include <chrono>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "smc/SmcSession.h"
#include "smc/diagnostics/WriteTests.h"
#include "tests/diagnostics/DiagnosticsFixture.h"

namespace corvane {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* forced = "F0Md=01:00";
constexpr const char* automatic = "F0Md=00:00";
constexpr const char* target0 = "F0Tg=00000000:00";
constexpr const char* target4000 = "F0Tg=00007a45:00";
constexpr const char* target5000 = "F0Tg=00409c45:00";

struct WriteTestRun {
    explicit WriteTestRun(MacModel model = tinyMac()) : platform(std::move(model)) {
        platform.recordWrites();
    }

    [[nodiscard]] Duration elapsed() { return platform.pauses.bootTime() - start; }
    [[nodiscard]] const std::string& output() const { return platform.recording.output; }
    [[nodiscard]] const std::string& errors() const { return platform.recording.errors; }

    DiagnosticsPlatform platform;
    SmcSession session{platform.makeSmcConnection()};
    BootTime start = platform.pauses.bootTime();
};

TEST(SpinUpTest, DrivesTheFanFor4SecondsAndPutsItBack) {
    WriteTestRun run;
    EXPECT_EQ(runSpinUpTest(run.platform), TestEnd::finished);
    EXPECT_EQ(run.elapsed(), seconds(4));
    EXPECT_THAT(run.platform.writes, ElementsAre(forced, target4000, automatic, target0));
    // Four seconds at 400 RPM/s, give or take the tachometer's noise.
    const std::size_t at = run.output().find("  F0Ac (current) =");
    ASSERT_NE(at, std::string::npos);
    EXPECT_NEAR(std::stod(run.output().substr(at + 18)), 1600.0, 30.0);
    EXPECT_FALSE(run.platform.machine.mac.isFanForced(0));
}

TEST(SpinUpTest, RestoresWhenASignalComes) {
    WriteTestRun run;
    run.platform.pauses.signalAfter(milliseconds(1500));
    EXPECT_EQ(runSpinUpTest(run.platform), TestEnd::interrupted);
    EXPECT_EQ(run.elapsed(), milliseconds(1500));
    EXPECT_THAT(run.platform.writes, ElementsAre(forced, target4000, automatic, target0));
    EXPECT_EQ(run.output(),
              "\n=== Write test: F0Md=1 (forced) + F0Tg=4000 ===\n"
              "  Saving original: F0Md=0\n"
              "  csmc_write_u8(F0Md, 1) rc=0\n"
              "  csmc_write_flt(F0Tg, 4000) rc=0\n"
              "  Waiting 4 seconds for fans to spin up...\n"
              "  Restored F0Md=0\n");
}

TEST(SpinUpTest, GivesTheFirmwareTimeToTakeTheFanBackAfterASignal) {
    WriteTestRun run;
    SimulatedMac& mac = run.platform.machine.mac;
    VirtualQueue outside(run.platform.machine.time);
    const auto refusal =
        outside.after(seconds(1), [&] { mac.setFault("F0Md", KeyFault::neverAutomatic(1)); });
    const auto recovery = outside.after(milliseconds(1800), [&] { mac.clearFaults(); });
    run.platform.pauses.signalAfter(milliseconds(1500));
    EXPECT_EQ(runSpinUpTest(run.platform), TestEnd::interrupted);
    EXPECT_EQ(run.elapsed(), milliseconds(1860));
    EXPECT_EQ(run.errors(), "");
    EXPECT_FALSE(mac.isAnyFanForced());
}

TEST(SpinUpTest, LeavesAFanThatWasForcedBeforeAsItWas) {
    WriteTestRun run;
    run.platform.pauses.isHolding = true;
    run.platform.machine.smc.writeByte("F0Md", 1);
    run.platform.machine.smc.writeFloat("F0Tg", 3000.0F);
    EXPECT_EQ(runSpinUpTest(run.platform), TestEnd::finished);
    EXPECT_TRUE(run.platform.machine.mac.isFanForced(0));
    EXPECT_EQ(run.platform.machine.mac.fanTarget(0), 3000.0);
    EXPECT_NE(run.output().find("  Saving original: F0Md=1\n"), std::string::npos);
    EXPECT_NE(run.output().find("  Restored F0Md=1\n"), std::string::npos);
}

TEST(SpinUpTest, ShowsTheCodesOfRefusedWrites) {
    WriteTestRun run(macBookPro14M4());
    EXPECT_EQ(runSpinUpTest(run.platform), TestEnd::finished);
    EXPECT_NE(run.output().find("  csmc_write_u8(F0Md, 1) rc=130\n"), std::string::npos);
    EXPECT_NE(run.output().find("  csmc_write_flt(F0Tg, 4000) rc=0\n"), std::string::npos);
    EXPECT_EQ(run.errors(), "");
}

TEST(SpinUpTest, DoesNotSlowDownAFanThatIsFaster) {
    WriteTestRun run;
    run.platform.machine.mac.holdSensor("F0Ac", 4000.5F);
    EXPECT_EQ(runSpinUpTest(run.platform), TestEnd::finished);
    EXPECT_THAT(run.platform.writes, IsEmpty());
    EXPECT_EQ(run.errors(), "Fan 0 is at 4000 rpm already, this test would slow it down. Skipped.\n");

    run.platform.machine.mac.holdSensor("F0Ac", 4000.0F);
    runSpinUpTest(run.platform);
    EXPECT_THAT(run.platform.writes, ElementsAre(forced, target4000, automatic, target0));
}

TEST(LoopTest, ForcesTheFanEvery200MillisecondsFor15Seconds) {
    WriteTestRun run;
    run.platform.machine.mac.holdSensor("F0Ac", 1234.5F);
    EXPECT_EQ(runLoopTest(run.platform, 1), TestEnd::finished);
    EXPECT_EQ(run.elapsed(), seconds(15));

    std::string expected =
        "\n=== AGGRESSIVE LOOP TEST (Md=1 + Tg=5000 every 200ms for 15s) ===\n"
        "  T+ 0.0s  F0: Ac=1234 Tg=5000 Md=1\n"
        "  T+ 0.2s  F0: Ac=1234 Tg=5000 Md=1\n";
    EXPECT_TRUE(run.output().starts_with(expected)) << run.output();
    EXPECT_TRUE(run.output().ends_with("  T+14.8s  F0: Ac=1234 Tg=5000 Md=1\nRestoring originals\n"));
    EXPECT_EQ(occurrences(run.output(), "  T+"), 75);

    std::vector<std::string> writes;
    for (int i = 0; i < 75; ++i) {
        writes.insert(writes.end(), {forced, target5000});
    }
    writes.insert(writes.end(), {automatic, target0});
    EXPECT_EQ(run.platform.writes, writes);
}

TEST(LoopTest, ShowsTwoFansAndDrivesAll) {
    MacModel model = macBookPro16();
    model.fans.push_back(model.fans.front());
    WriteTestRun run(model);
    run.platform.machine.mac.holdSensor("F0Ac", 1500.0F);
    run.platform.machine.mac.holdSensor("F1Ac", 1600.0F);
    bool drivesTheThird = false;
    run.platform.pauses.at(seconds(5), [&] { drivesTheThird = run.platform.machine.mac.isFanForced(2); });
    EXPECT_EQ(runLoopTest(run.platform, 3), TestEnd::finished);
    EXPECT_EQ(occurrences(run.output(), "F0: Ac=1500 Tg=5000 Md=1 | F1: Ac=1600 Md=1\n"), 75) << run.output();
    EXPECT_TRUE(drivesTheThird);
    EXPECT_FALSE(run.platform.machine.mac.isAnyFanForced());
}

TEST(LoopTest, RestoresEveryFanWhenASignalComes) {
    WriteTestRun run(macBookPro16());
    run.platform.pauses.signalAfter(milliseconds(700));
    EXPECT_EQ(runLoopTest(run.platform, 2), TestEnd::interrupted);
    EXPECT_EQ(run.elapsed(), milliseconds(700));
    EXPECT_EQ(occurrences(run.output(), "  T+"), 4);
    EXPECT_TRUE(run.output().ends_with("Restoring originals\n"));
    EXPECT_FALSE(run.platform.machine.mac.isAnyFanForced());
    EXPECT_EQ(run.platform.writes.back(), "F1Tg=00000000:00");
}

TEST(LoopTest, RestoresModesAndTargetsOfFansThatWereForcedBefore) {
    WriteTestRun run(macBookPro16());
    run.platform.pauses.isHolding = true;
    run.platform.machine.smc.writeByte("F1Md", 1);
    run.platform.machine.smc.writeFloat("F1Tg", 2500.0F);
    EXPECT_EQ(runLoopTest(run.platform, 2), TestEnd::finished);
    EXPECT_FALSE(run.platform.machine.mac.isFanForced(0));
    EXPECT_TRUE(run.platform.machine.mac.isFanForced(1));
    EXPECT_EQ(run.platform.machine.mac.fanTarget(1), 2500.0);
}

TEST(LoopTest, DoesNotSlowDownASecondFanThatIsFaster) {
    WriteTestRun run(macBookPro16());
    run.platform.machine.mac.holdSensor("F1Tg", 5500.0F);
    EXPECT_EQ(runLoopTest(run.platform, 2), TestEnd::finished);
    EXPECT_THAT(run.platform.writes, IsEmpty());
    EXPECT_EQ(run.errors(), "Fan 1 is at 5500 rpm already, this test would slow it down. Skipped.\n");
}

TEST(LoopTest, RestoresTheOtherFansWhenOneDoesNotComeBack) {
    WriteTestRun run(macBookPro16());
    run.platform.pauses.at(seconds(1),
                           [&] { run.platform.machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1)); });
    EXPECT_EQ(runLoopTest(run.platform, 2), TestEnd::notRestored);
    EXPECT_EQ(run.errors(), "F0Md could not be restored: it reads 1 instead of 0\n");
    EXPECT_TRUE(run.platform.machine.mac.isFanForced(0));
    EXPECT_EQ(run.platform.machine.mac.fanTarget(0), 5000.0);
    EXPECT_FALSE(run.platform.machine.mac.isFanForced(1));
}

TEST(Probes, ShowWhatSticks) {
    WriteTestRun run;
    EXPECT_EQ(runProbes(run.platform), TestEnd::finished);
    EXPECT_EQ(run.output(),
              "\n=== MODE WRITE PROBE ===\n"
              "Initial F0Md = 0\n"
              "  write F0Md=0 → readback=0 ✓ STUCK\n"
              "  write F0Md=1 → readback=1 ✓ STUCK\n"
              "\n=== TARGET WRITE PROBE (current Md=1) ===\n"
              "  write F0Tg=4000 → readback=0 fpe2≈4000 ✓ STUCK\n"
              "  write F0Tg=4000 → readback=4000 ✓ STUCK\n"
              "  write F0Tg=5000 → readback=0 fpe2≈5000 ✓ STUCK\n"
              "  write F0Tg=5000 → readback=5000 ✓ STUCK\n");
    EXPECT_THAT(run.platform.writes, ElementsAre(automatic, forced, "F0Tg=3e800000:00", target4000,
                                                 "F0Tg=4e200000:00", target5000, automatic, target0));
    EXPECT_FALSE(run.platform.machine.mac.isFanForced(0));
}

TEST(Probes, ShowWhatTheFirmwareReverts) {
    WriteTestRun run;
    run.platform.machine.mac.holdSensor("F0Md", 3.0F);
    run.platform.machine.mac.holdSensor("F0Tg", 2000.0F);
    EXPECT_EQ(runProbes(run.platform), TestEnd::finished);
    EXPECT_EQ(run.output(),
              "\n=== MODE WRITE PROBE ===\n"
              "Initial F0Md = 3\n"
              "  write F0Md=0 → readback=3 × reverted to 3\n"
              "  write F0Md=1 → readback=3 × reverted to 3\n"
              "\n=== TARGET WRITE PROBE (current Md=3) ===\n"
              "  write F0Tg=4000 → readback=2000 fpe2≈0 × reverted to 0\n"
              "  write F0Tg=4000 → readback=2000 × reverted to 2000\n"
              "  write F0Tg=5000 → readback=2000 fpe2≈0 × reverted to 0\n"
              "  write F0Tg=5000 → readback=2000 × reverted to 2000\n");
}

TEST(Probes, ProbeNoTargetBelowWhatTheFanTurnsAt) {
    WriteTestRun run;
    run.platform.machine.mac.holdSensor("F0Ac", 4500.25F);
    EXPECT_EQ(runProbes(run.platform), TestEnd::finished);
    EXPECT_NE(run.output().find("  write F0Tg=4501 → readback=4501 ✓ STUCK\n"), std::string::npos);
    EXPECT_NE(run.output().find("  write F0Tg=5000 → readback=5000 ✓ STUCK\n"), std::string::npos);
    EXPECT_EQ(run.output().find("F0Tg=4000"), std::string::npos);
}

TEST(Probes, ShowRefusedTargets) {
    WriteTestRun run;
    run.platform.machine.mac.setFault("F0Tg", KeyFault::writeRefused());
    EXPECT_EQ(runProbes(run.platform), TestEnd::finished);
    EXPECT_NE(run.output().find("  write F0Tg=5000 → readback=0 × reverted to 0\n"), std::string::npos)
        << run.output();
}

TEST(Probes, RestoreWhereverASignalComes) {
    for (int at = 0; at < 1200; at += 100) {
        WriteTestRun run;
        run.platform.pauses.signalAfter(milliseconds(at));
        EXPECT_EQ(runProbes(run.platform), TestEnd::interrupted) << at;
        EXPECT_EQ(run.elapsed(), milliseconds(at));
        EXPECT_FALSE(run.platform.machine.mac.isFanForced(0)) << at;
        ASSERT_GE(run.platform.writes.size(), 3U);
        EXPECT_EQ(run.platform.writes.end()[-2], automatic) << at;
        EXPECT_EQ(run.platform.writes.back(), target0) << at;
    }
}

TEST(Probes, LeaveNothingForcedOnAnyModel) {
    for (const MacModel& model : macModels()) {
        if (model.fans.empty()) {
            continue;
        }
        WriteTestRun run(model);
        EXPECT_EQ(runProbes(run.platform), TestEnd::finished) << model.name;
        EXPECT_FALSE(run.platform.machine.mac.isAnyFanForced()) << model.name;
        EXPECT_EQ(run.errors(), "") << model.name;
    }
}

}  // namespace
}  // namespace corvane
