#include "tests/helper/HelperMachine.h"
#include "tests/helper/daemonLines.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

float targetAt(float celsius, double floor) {
    HelperMachine machine;
    machine.startAt(celsius);
    machine.setFloor(floor);
    return machine.mac.lastWrittenTarget(0).value_or(-1.0F);
}

TEST(ControlLoop, TicksAtOnceThenAfterATenthOfASecondThenEveryFourTenths) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.advance(1500ms);
    EXPECT_THAT(machine.timesOf("Ftst=1"), ElementsAre(0ms, 100ms, 500ms, 900ms, 1300ms));
}

TEST(ControlLoop, TakesTheFloorWhenItIsCool) {
    EXPECT_EQ(targetAt(60.0F, 30.0), 2200.0F);
    EXPECT_EQ(targetAt(72.0F, 30.0), 2200.0F);
    EXPECT_EQ(targetAt(60.0F, 0.01), 1000.0F);
    EXPECT_EQ(targetAt(60.0F, 100.0), 5000.0F);
}

TEST(ControlLoop, TakesTheSafetyCurveWhenItAsksForMore) {
    EXPECT_EQ(targetAt(90.0F, 30.0), 4130.0F);
    EXPECT_EQ(targetAt(83.5F, 30.0), 3000.0F);
    EXPECT_EQ(targetAt(83.5F, 50.0), 3000.0F);
    EXPECT_EQ(targetAt(83.5F, 60.0), 3400.0F);
    EXPECT_EQ(targetAt(95.0F, 30.0), 5000.0F);
}

TEST(ControlLoop, RunsFullSpeedJustBelowTheCriticalTemperature) {
    EXPECT_EQ(targetAt(99.9F, 10.0), 5000.0F);
}

TEST(ControlLoop, TruncatesTheTarget) {
    EXPECT_EQ(targetAt(60.0F, 33.33), 2333.0F);
    EXPECT_EQ(targetAt(60.0F, 33.3499), 2333.0F);
}

/// Without its minimum a fan would be driven slower than its firmware lets it turn.
TEST(ControlLoop, LearnsALimitThatCouldNotBeReadAtTheStartBeforeItDrivesTheFan) {
    for (const char* limit : {"F0Mn", "F0Mx"}) {
        HelperMachine machine;
        machine.mac.setFault(limit, KeyFault::readFails());
        machine.startAt(60.0F);
        machine.mac.clearFaults();
        machine.setFloor(30.0);
        EXPECT_EQ(machine.mac.lastWrittenTarget(0), 2200.0F) << limit;
    }
}

TEST(ControlLoop, CountsARangeTurnedAroundAsNone) {
    HelperMachine machine;
    machine.mac.holdSensor("F0Mn", 3000.0F);
    machine.mac.holdSensor("F0Mx", 2000.0F);
    machine.startAt(90.0F);
    machine.setFloor(30.0);
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), 3000.0F);
}

/// The firmware would cool harder than a floor that is reckoned with 0 for a limit.
TEST(ControlLoop, HoldsNoFanWhoseLimitsAreImplausible) {
    for (const auto& [limit, rpm] : {std::pair{"F0Mn", 1e30F}, std::pair{"F0Mn", -1.0F},
                                     std::pair{"F0Mx", 1e30F}, std::pair{"F0Mx", 0.5F}}) {
        HelperMachine machine;
        machine.mac.holdSensor(limit, rpm);
        machine.startAt(99.0F);
        machine.setFloor(100.0);
        machine.advanceInContact(10s);
        EXPECT_FALSE(machine.mac.isAnyFanForced()) << limit << " " << rpm;

        machine.mac.releaseSensor(limit);
        machine.advanceInContact(1s);
        EXPECT_TRUE(machine.mac.isFanForced(0)) << limit << " " << rpm;
        EXPECT_EQ(machine.mac.lastWrittenTarget(0), 5000.0F) << limit << " " << rpm;
    }
}

TEST(ControlLoop, KeepsToAnAbsurdlyWideRange) {
    HelperMachine machine;
    machine.mac.holdSensor("F0Mn", 0.0F);
    machine.mac.holdSensor("F0Mx", 2147483520.0F);
    machine.startAt(60.0F);
    machine.setFloor(100.0);
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), 2147483520.0F);
}

TEST(ControlLoop, WritesTheForceSwitchThenModeAndTargetOfEachFan) {
    HelperMachine machine(twoFanMac());
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("Ftst=1", "F0Md=1", "F0Tg=2200", "F1Md=1", "F1Tg=2700"));
    machine.writes.clear();
    machine.advance(100ms);
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("Ftst=1", "F0Md=1", "F0Tg=2200", "F1Md=1", "F1Tg=2700"));
    EXPECT_TRUE(machine.mac.isFanForced(0));
    EXPECT_TRUE(machine.mac.isFanForced(1));
}

TEST(ControlLoop, WritesTheMachinesOwnSpellingOfTheModeKey) {
    HelperMachine machine(lowerCaseMac());
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("Ftst=1", "F0md=1", "F0Tg=2200"));
    EXPECT_TRUE(machine.mac.isFanForced(0));
}

TEST(ControlLoop, AsksForTheSpellingOfTheModeKeyOnce) {
    HelperMachine machine(twoFanMac());
    machine.startAt(60.0F);
    machine.mac.setFault("F0Md", KeyFault::vanished());
    machine.setFloor(30.0);
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("Ftst=1", "F0Tg=2200", "F1Md=1", "F1Tg=2700"));
}

TEST(ControlLoop, GainsAMachineThatLetsItsFansBeForcedOnlyAfterAWhile) {
    HelperMachine machine(macBookPro14M4());
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    EXPECT_EQ(machine.log.count("F0:Md=130,"), 1U) << "refused at first";
    machine.advance(3400ms);
    EXPECT_FALSE(machine.mac.isAnyFanForced());
    machine.advance(500ms);
    EXPECT_TRUE(machine.mac.isFanForced(0));
    EXPECT_TRUE(machine.mac.isFanForced(1));
    machine.stopBoost();
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(ControlLoop, WorksWithoutAForceSwitch) {
    HelperMachine machine(macBookPro14M5());
    machine.startAt(60.0F);
    machine.setFloor(50.0);
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("F0md=1", "F0Tg=4607"));
    EXPECT_THAT(machine.log.lines(), ElementsAre(loopStarted,
                                                 "Corvane daemon: #1 Ftst=132 temp=60° floor=50% eff=50% "
                                                 "F0:Md=0,Tg=4607/0"));
}

TEST(ControlLoop, ReportsTheFirstTickAndEveryTwentieth) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    EXPECT_THAT(
        machine.log.lines(),
        ElementsAre(loopStarted, "Corvane daemon: #1 Ftst=0 temp=60° floor=30% eff=30% F0:Md=0,Tg=2200/0"));
    machine.log.clear();
    machine.advanceInContact(7299ms);
    EXPECT_THAT(machine.log.lines(), IsEmpty());
    machine.advance(1ms);
    EXPECT_THAT(machine.log.lines(),
                ElementsAre("Corvane daemon: #20 Ftst=0 temp=60° floor=30% eff=30% F0:Md=0,Tg=2200/0"));
    machine.log.clear();
    machine.advanceInContact(7999ms);
    EXPECT_THAT(machine.log.lines(), IsEmpty());
    machine.advance(1ms);
    EXPECT_EQ(machine.log.count("Corvane daemon: #40 "), 1U);
    machine.advanceInContact(8s);
    EXPECT_EQ(machine.log.count("Corvane daemon: #60 "), 1U);
    EXPECT_EQ(machine.log.lines().size(), 2U);
}

TEST(ControlLoop, CountsTicksFromOneAgainAfterARelease) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.advance(3s);
    machine.stopBoost();
    machine.log.clear();
    machine.setFloor(30.0);
    EXPECT_EQ(machine.log.count("Corvane daemon: #1 "), 1U);
}

TEST(ControlLoop, ReportsRoundedValuesOfEveryFanAndTheHeat) {
    HelperMachine machine(twoFanMac());
    machine.startAt(90.0F);
    machine.setFloor(42.5);
    EXPECT_EQ(machine.log.lines().at(1),
              "Corvane daemon: #1 Ftst=0 temp=90° floor=42% eff=78% F0:Md=0,Tg=4130/0 F1:Md=0,Tg=4630/0");
}

TEST(ControlLoop, ReportsRefusedWritesAndGoesOn) {
    HelperMachine machine(twoFanMac());
    machine.mac.setFault("Ftst", KeyFault::writeRefused());
    machine.mac.setFault("F0Md", KeyFault::writeRefused());
    machine.mac.setFault("F1Tg", KeyFault::writeRefused());
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    EXPECT_EQ(
        machine.log.lines().at(1),
        "Corvane daemon: #1 Ftst=134 temp=60° floor=30% eff=30% F0:Md=134,Tg=2200/0 F1:Md=0,Tg=2700/134");
    machine.advance(5s);
    EXPECT_EQ(machine.timesOf("F0Tg=2200").size(), 14U);
    EXPECT_TRUE(machine.isBoosted());
}

TEST(ControlLoop, ReportsAMissingKeyAsTheControllerDoes) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.mac.setFault("F0Tg", KeyFault::vanished());
    machine.setFloor(30.0);
    EXPECT_EQ(machine.log.count("F0:Md=0,Tg=2200/132"), 1U);
}

TEST(ControlLoop, ReportsAVanishedController) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.log.clear();
    machine.mac.setSmcPresent(false);
    machine.advance(500ms);
    EXPECT_THAT(machine.log.lines(),
                ElementsAre("Corvane daemon: lost all temp readings — releasing to Apple", released));
}

TEST(ControlLoop, HoldsNoFanOnAMachineWithoutAny) {
    HelperMachine machine(macBookAir());
    machine.startAt(60.0F);
    EXPECT_EQ(machine.setFloor(50.0), (Answer{true, "floor set to 50%"}));
    EXPECT_TRUE(machine.isBoosted());
    EXPECT_EQ(machine.log.lines().at(1), "Corvane daemon: #1 Ftst=132 temp=60° floor=50% eff=50% ");
    EXPECT_EQ(machine.stopBoost(), (Answer{true, "boost stopped"}));
    EXPECT_EQ(machine.log.lines().at(2), released);
}

TEST(ControlLoop, ANewFloorTicksAtOnceAndLeavesTheTimerAlone) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.advance(200ms);
    machine.setFloor(50.0);
    machine.advance(300ms);
    EXPECT_THAT(machine.timesOf("Ftst=1"), ElementsAre(0ms, 100ms, 200ms, 500ms));
    EXPECT_THAT(machine.timesOf("F0Tg=3000"), ElementsAre(200ms, 500ms));
    EXPECT_EQ(machine.log.count(loopStarted), 1U);
}

TEST(ControlLoop, ALowerFloorCountsAtOnce) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(80.0);
    machine.setFloor(20.0);
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), 1800.0F);
}

TEST(ControlLoop, WritesNothingMoreOnceReleased) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.advance(1s);
    machine.stopBoost();
    machine.forget();
    machine.advance(20s);
    EXPECT_THAT(machine.writtenTexts(), IsEmpty());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
}

TEST(ControlLoop, ATickInsideAReleaseNeverHappens) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1));
    machine.advance(50ms);
    machine.writes.clear();
    machine.stopBoost();
    machine.advance(5s);
    EXPECT_THAT(machine.timesOf("Ftst=1"), IsEmpty());
    EXPECT_THAT(machine.timesOf("F0Md=1"), IsEmpty());
}

}  // namespace
}  // namespace corvane
