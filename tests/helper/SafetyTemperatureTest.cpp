#include "tests/helper/HelperMachine.h"
#include "tests/helper/daemonLines.h"
#include "tests/support/oddNumbers.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto lost = "Corvane daemon: lost all temp readings — releasing to Apple";

/// Two ticks: one fresh temperature.
constexpr Duration freshReading = 800ms;

MacModel twoSensorMac() {
    return macWithSensors({sensor::fixed("Tg05", 50.0F), sensor::fixed("Tp09", 50.0F)});
}

/// A boost of 30 % whose temperatures were `readings`, one for each fresh reading.
struct BoostThrough {
    explicit BoostThrough(std::initializer_list<float> readings) {
        machine.startAt(60.0F);
        auto reading = readings.begin();
        machine.mac.holdSensorsAt(*reading);
        machine.setFloor(30.0);
        // Ticks 1, 2, 3, 4, ... are at 0, 0.1, 0.5, 0.9, ... s.
        machine.advance(300ms);
        for (++reading; reading != readings.end(); ++reading) {
            machine.mac.holdSensorsAt(*reading);
            machine.ping();
            machine.advance(freshReading);
        }
    }
    HelperMachine machine;
};

TEST(SafetyTemperature, IsTakenOnOddTicksOnly) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.mac.holdSensorsAt(90.0F);
    machine.advance(499ms);
    EXPECT_THAT(machine.timesOf("F0Tg=2200"), ElementsAre(0ms, 100ms));
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), 2200.0F);
    machine.advance(1ms);
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), 4130.0F) << "the upper of two middles";
    machine.mac.holdSensorsAt(72.0F);
    machine.advance(400ms);
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), 4130.0F);
}

TEST(SafetyTemperature, IsNotMissedOnEvenTicks) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.mac.setFault("Tp09", KeyFault::readFails());
    machine.advance(100ms);
    EXPECT_TRUE(machine.mac.isFanForced(0));
    machine.mac.clearFaults();
    machine.advance(1s);
    EXPECT_EQ(machine.log.count("lost all"), 0U);
}

TEST(SafetyTemperature, ReleasesFullControlAtExactlyOneHundredDegrees) {
    HelperMachine machine;
    machine.startAt(100.0F);
    EXPECT_EQ(machine.setFloor(30.0), (Answer{true, "floor set to 30%"}));
    EXPECT_THAT(
        machine.log.lines(),
        ElementsAre(loopStarted,
                    "Corvane daemon: CRITICAL temp 100° ≥ 100° — releasing FULL control to Apple", released));
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("Ftst=1", "F0Tg=0", "F0Md=0", "Ftst=0"));
    EXPECT_FALSE(machine.isBoosted());
}

TEST(SafetyTemperature, JustBelowOneHundredDegreesKeepsControl) {
    HelperMachine machine;
    machine.startAt(99.9F);
    machine.setFloor(30.0);
    EXPECT_EQ(machine.log.count("CRITICAL"), 0U);
    EXPECT_EQ(machine.log.count("temp=100° floor=30% eff=100%"), 1U);
    EXPECT_TRUE(machine.isBoosted());
}

TEST(SafetyTemperature, ReleasesWhenHeatTurnsCriticalDuringABoost) {
    BoostThrough boost({60.0F, 105.0F});
    EXPECT_EQ(boost.machine.log.count("CRITICAL temp 105° ≥ 100° — releasing FULL control to Apple"), 1U);
    EXPECT_FALSE(boost.machine.mac.isAnyFanForced());
    EXPECT_FALSE(boost.machine.isBoosted());
}

TEST(SafetyTemperature, IsAMedianSoThatOneSpikeIsVotedDown) {
    BoostThrough boost({80.0F, 81.0F, 80.0F, 98.0F, 81.0F});
    EXPECT_EQ(boost.machine.mac.lastWrittenTarget(0), 2565.0F) << "of 81 degrees: 39.13 %";
}

TEST(SafetyTemperature, ACriticalSpikeAmongFiveReadingsReleasesNothing) {
    BoostThrough boost({60.0F, 60.0F, 60.0F, 60.0F, 125.0F, 60.0F, 60.0F});
    EXPECT_EQ(boost.machine.log.count("CRITICAL"), 0U);
    EXPECT_TRUE(boost.machine.isBoosted());
}

TEST(SafetyTemperature, LastingCriticalHeatReleasesAtTheThirdReading) {
    BoostThrough boost({60.0F, 60.0F, 60.0F, 60.0F, 60.0F});
    boost.machine.mac.holdSensorsAt(101.0F);
    boost.machine.ping();
    boost.machine.advance(2 * freshReading);
    EXPECT_TRUE(boost.machine.isBoosted());
    boost.machine.advance(freshReading);
    EXPECT_FALSE(boost.machine.isBoosted());
}

TEST(SafetyTemperature, ForgetsItsHistoryAtARelease) {
    BoostThrough boost({60.0F, 60.0F, 60.0F, 60.0F, 60.0F});
    boost.machine.stopBoost();
    boost.machine.mac.holdSensorsAt(100.0F);
    boost.machine.setFloor(30.0);
    EXPECT_EQ(boost.machine.log.count("CRITICAL"), 1U);
}

TEST(SafetyTemperature, IsTheHottestOfAllSensors) {
    HelperMachine machine(twoSensorMac());
    machine.startAt(60.0F);
    machine.mac.holdSensor("Tg05", 90.0F);
    machine.setFloor(30.0);
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), 4130.0F);
}

TEST(SafetyTemperature, LeavesOutImplausibleReadings) {
    for (const float broken :
         {130.0F, 131.0F, 5.0F, -40.0F, infinite<float>, -infinite<float>, notANumber<float>}) {
        HelperMachine machine(twoSensorMac());
        machine.startAt(60.0F);
        machine.mac.holdSensor("Tp09", broken);
        machine.setFloor(30.0);
        EXPECT_EQ(machine.log.count("temp=60° floor=30% eff=30%"), 1U) << broken;
    }
}

TEST(SafetyTemperature, CountsReadingsUpTo130Degrees) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.mac.holdSensorsAt(129.9F);
    machine.setFloor(30.0);
    EXPECT_EQ(machine.log.count("CRITICAL temp 130° ≥ 100°"), 1U);
}

TEST(SafetyTemperature, CountsReadingsDownTo5Degrees) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.mac.holdSensorsAt(5.01F);
    machine.setFloor(30.0);
    EXPECT_EQ(machine.log.count("temp=5° floor=30% eff=30%"), 1U);
}

TEST(SafetyTemperature, LosingEverySensorReleases) {
    for (const float broken : {130.0F, 5.0F, notANumber<float>, infinite<float>}) {
        HelperMachine machine(twoSensorMac());
        machine.startAt(60.0F);
        machine.setFloor(30.0);
        machine.forget();
        machine.mac.holdSensorsAt(broken);
        machine.advance(500ms);
        EXPECT_THAT(machine.log.lines(), ElementsAre(lost, released)) << broken;
        EXPECT_FALSE(machine.mac.isAnyFanForced());
        machine.writes.clear();
        machine.advance(10s);
        EXPECT_THAT(machine.writtenTexts(), IsEmpty());
    }
}

TEST(SafetyTemperature, LosingOneSensorOfTwoGoesOnWithTheOther) {
    HelperMachine machine(twoSensorMac());
    machine.startAt(60.0F);
    machine.mac.setFault("Tp09", KeyFault::vanished());
    machine.setFloor(30.0);
    machine.advance(2s);
    EXPECT_EQ(machine.log.count("lost all"), 0U);
    EXPECT_TRUE(machine.isBoosted());
}

TEST(SafetyTemperature, ALostSensorThatReturnsDoesNotBringTheBoostBack) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.mac.setFault("Tp09", KeyFault::readFails());
    machine.advance(1s);
    machine.mac.clearFaults();
    machine.forget();
    machine.advance(5s);
    EXPECT_THAT(machine.writtenTexts(), IsEmpty());
    EXPECT_FALSE(machine.isBoosted());
}

TEST(SafetyTemperature, WithoutSensorsNoFanIsEverForced) {
    HelperMachine machine(macWithSensors({}));
    machine.start();
    machine.forget();
    EXPECT_EQ(machine.setFloor(30.0), (Answer{true, "floor set to 30%"}));
    EXPECT_THAT(
        machine.log.lines(),
        ElementsAre(loopStarted, "Corvane daemon: no temp sensors — refusing manual control for safety",
                    released));
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("F0Tg=0", "F0Md=0", "Ftst=0"));
    EXPECT_FALSE(machine.isBoosted());
}

}  // namespace
}  // namespace corvane
