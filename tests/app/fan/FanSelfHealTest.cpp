#include "tests/app/fan/ReportedMachine.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = CoolingProfile::Kind;

constexpr const char* fansReleased =
    "Corvane: self-heal — daemon forcing unintended state (fans=yes lid=no), releasing";
constexpr const char* lidReleased =
    "Corvane: self-heal — daemon forcing unintended state (fans=no lid=yes), releasing";
constexpr const char* bothReleased =
    "Corvane: self-heal — daemon forcing unintended state (fans=yes lid=yes), releasing";

/// A machine where somebody else, too, tells the helper what to do.
class ContestedMachine : public FanMachine {
public:
    explicit ContestedMachine(float celsius = 50) { openAt(celsius); }

    void strangerForcesFans() { helper.setFloor(60); }
    void strangerReleasesFans() { helper.stopBoost(); }
    void strangerLocksLid() { helper.setLid(true); }
};

// Fans

TEST(FanSelfHeal, ReleasesAtTheFifthRecordFansThatNobodyWantsForced) {
    ContestedMachine machine;
    machine.strangerForcesFans();
    machine.advance(4s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_TRUE(machine.fan->isBoosted());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
    machine.advance(1s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_FALSE(machine.fan->isBoosted());
    EXPECT_THAT(machine.log.lines(), ElementsAre(fansReleased));
}

TEST(FanSelfHeal, LogsOnceAndIsQuietAfterwards) {
    ContestedMachine machine;
    machine.strangerForcesFans();
    machine.advance(60s);
    EXPECT_THAT(machine.log.lines(), ElementsAre(fansReleased));
    EXPECT_EQ(machine.fan->statusMessage().toStdString(), "");
}

TEST(FanSelfHeal, CountsFromZeroAgainAfterItReleased) {
    ContestedMachine machine;
    machine.strangerForcesFans();
    machine.advance(5s);
    machine.strangerForcesFans();
    machine.advance(4s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_EQ(machine.log.lines().size(), 1U);
    machine.advance(1s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_EQ(machine.log.lines().size(), 2U);
}

TEST(FanSelfHeal, CountsFromZeroAgainEvenWhenTheReleaseChangesNothing) {
    ReportedMachine machine;
    machine.open();
    machine.receiveTimes(4, recordOf({{"isBoosted", true}}));
    EXPECT_THAT(machine.log.lines(), IsEmpty());
    // The release asks for a record of its own, which counts as well.
    machine.receive({{"isBoosted", true}});
    EXPECT_EQ(machine.log.lines().size(), 1U);
    machine.receiveTimes(3, recordOf({{"isBoosted", true}}));
    EXPECT_EQ(machine.log.lines().size(), 1U);
    machine.receive({{"isBoosted", true}});
    EXPECT_EQ(machine.log.lines().size(), 2U);
}

TEST(FanSelfHeal, CountsFromZeroAgainAfterOneRecordWithoutMismatch) {
    ContestedMachine machine;
    machine.strangerForcesFans();
    machine.advance(4s);
    machine.strangerReleasesFans();
    machine.advance(1s);
    machine.strangerForcesFans();
    machine.advance(4s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
    machine.advance(1s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST(FanSelfHeal, TakesARecordThatSaysNothingOfABoostForOneWithoutMismatch) {
    ReportedMachine machine;
    machine.open();
    for (int round = 0; round < 5; ++round) {
        machine.receiveTimes(4, recordOf({{"isBoosted", true}, {"lidStayAwake", true}}));
        machine.receive({{"isBoosted", 1}, {"lidStayAwake", std::string("true")}});
    }
    EXPECT_THAT(machine.log.lines(), IsEmpty());
}

TEST(FanSelfHeal, CountsRecordsNotSeconds) {
    ContestedMachine machine;
    machine.strangerForcesFans();
    for (int record = 0; record < 5; ++record) {
        machine.fan->refresh();
    }
    machine.settle();
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_THAT(machine.log.lines(), ElementsAre(fansReleased));
}

TEST(FanSelfHeal, ComparesBeforeARecordsTemperatureEngagesAutomaticMode) {
    ReportedMachine machine;
    machine.open();
    machine.fan->setAuto(true);
    machine.receiveTimes(4, recordOf({{"isBoosted", true}, {"cpuTemp", 30.0}}));
    machine.receive({{"isBoosted", true}, {"cpuTemp", 80.0}, {"gpuTemp", 80.0}});
    EXPECT_EQ(machine.log.lines().size(), 1U);
    EXPECT_TRUE(machine.fan->autoEngaged());
    EXPECT_GT(machine.fan->targetPercent(), 0);
}

TEST(FanSelfHeal, LeavesAManualBoostAlone) {
    ContestedMachine machine;
    machine.fan->setCoolingMode(CoolingMode::manual);
    machine.fan->setFansEnabled(true);
    machine.advance(60s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
}

TEST(FanSelfHeal, LeavesForcedFansAloneWhileTheSwitchIsOn) {
    ContestedMachine machine(30);
    machine.fan->setFansEnabled(true);
    machine.strangerForcesFans();
    machine.advance(60s);
    EXPECT_FALSE(machine.fan->autoEngaged());
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
}

TEST(FanSelfHeal, LeavesForcedFansAloneWhileTheAutomationAsks) {
    ContestedMachine machine(30);
    machine.fan->setTriggerCooling(Kind::silent);
    machine.strangerForcesFans();
    machine.advance(60s);
    EXPECT_FALSE(machine.fan->autoEngaged());
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
}

TEST(FanSelfHeal, LeavesForcedFansAloneWhileAutomaticModeHoldsAFloor) {
    ContestedMachine machine(70);
    machine.fan->setAuto(true);
    machine.advance(60s);
    EXPECT_TRUE(machine.fan->autoEngaged());
    EXPECT_FALSE(machine.fan->fansEnabled());
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
}

TEST(FanSelfHeal, BeginsToCountWhenTheLastReasonForForcedFansEnds) {
    ContestedMachine machine(30);
    machine.fan->setTriggerCooling(Kind::silent);
    machine.strangerForcesFans();
    machine.advance(20s);
    machine.fan->setTriggerCooling(std::nullopt);
    machine.advance(4s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    machine.advance(1s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

// Lid

TEST(FanSelfHeal, ClearsAtTheFifthRecordALidLockThatNobodyWants) {
    ContestedMachine machine;
    machine.strangerLocksLid();
    machine.advance(4s);
    EXPECT_TRUE(machine.helper.sleepSetting.isSleepDisabled());
    machine.advance(1s);
    EXPECT_FALSE(machine.helper.sleepSetting.isSleepDisabled());
    EXPECT_THAT(machine.log.lines(), ElementsAre(lidReleased));
    machine.advance(60s);
    EXPECT_EQ(machine.log.lines().size(), 1U);
}

TEST(FanSelfHeal, LeavesTheLidLockAloneThatItAskedForItself) {
    ContestedMachine machine;
    machine.fan->setLidStayAwake(true);
    machine.advance(60s);
    EXPECT_TRUE(machine.fan->intendedLidLock());
    EXPECT_TRUE(machine.helper.sleepSetting.isSleepDisabled());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
}

TEST(FanSelfHeal, ClearsALidLockThatIsLockedAgainAfterItWasWithdrawn) {
    ContestedMachine machine;
    machine.fan->setLidStayAwake(true);
    machine.advance(2s);
    machine.fan->setLidStayAwake(false);
    machine.advance(2s);
    machine.strangerLocksLid();
    machine.advance(5s);
    EXPECT_FALSE(machine.helper.sleepSetting.isSleepDisabled());
    EXPECT_THAT(machine.log.lines(), ElementsAre(lidReleased));
}

TEST(FanSelfHeal, KeepsTheFansForcedThatAreWantedWhenItClearsTheLid) {
    ContestedMachine machine;
    machine.fan->setCoolingMode(CoolingMode::manual);
    machine.fan->setFansEnabled(true);
    machine.strangerLocksLid();
    machine.advance(10s);
    EXPECT_FALSE(machine.helper.sleepSetting.isSleepDisabled());
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_EQ(machine.fan->targetPercent(), 100);
}

TEST(FanSelfHeal, KeepsTheLidLockThatIsWantedWhenItReleasesTheFans) {
    ContestedMachine machine;
    machine.fan->setLidStayAwake(true);
    machine.strangerForcesFans();
    machine.advance(10s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_TRUE(machine.helper.sleepSetting.isSleepDisabled());
    EXPECT_TRUE(machine.fan->intendedLidLock());
    EXPECT_THAT(machine.log.lines(), ElementsAre(fansReleased));
}

// Both

TEST(FanSelfHeal, ReleasesBothAtOnce) {
    ContestedMachine machine;
    machine.strangerForcesFans();
    machine.strangerLocksLid();
    machine.advance(5s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_FALSE(machine.helper.sleepSetting.isSleepDisabled());
    EXPECT_THAT(machine.log.lines(), ElementsAre(bothReleased));
}

TEST(FanSelfHeal, CountsMismatchesOfEitherKindTogether) {
    ContestedMachine machine;
    machine.strangerForcesFans();
    machine.advance(2s);
    machine.strangerReleasesFans();
    machine.strangerLocksLid();
    machine.advance(3s);
    EXPECT_THAT(machine.log.lines(), ElementsAre(lidReleased));
}

// Without an installed helper a connection exists only because something insisted on one.

TEST(FanSelfHeal, ReleasesTheFansButNotTheLidOfAHelperThatIsNotInstalled) {
    FanMachine machine;
    machine.installer.setInstalled(false);
    machine.helper.mac.holdSensorsAt(50);
    machine.open();
    machine.fan->reconcileToOffOnLaunch();
    machine.advance(5s);
    machine.helper.setFloor(60);
    machine.helper.setLid(true);
    machine.advance(5s);
    EXPECT_THAT(machine.log.lines(), ElementsAre(bothReleased));
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_TRUE(machine.helper.sleepSetting.isSleepDisabled());
    machine.advance(20s);
    EXPECT_TRUE(machine.helper.sleepSetting.isSleepDisabled());
    EXPECT_GE(machine.log.count("(fans=no lid=yes)"), 4U);
}

}  // namespace
}  // namespace corvane
