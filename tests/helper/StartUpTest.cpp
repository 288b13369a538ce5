#include "tests/helper/HelperMachine.h"
#include "tests/helper/daemonLines.h"
#include "tests/support/oddNumbers.h"

namespace corvane {
namespace {

using testing::ElementsAre;

int sensorCount(HelperMachine& machine) {
    return *machine.status().get<std::int32_t>(StatusKey::tempSensorCount);
}

StatusRecord onlyFan(HelperMachine& machine) {
    return machine.status().get<std::vector<StatusRecord>>(StatusKey::fans)->at(0);
}

TEST(StartUp, TellsWhatItFoundThenThatItResetTheFans) {
    HelperMachine machine;
    machine.start();
    EXPECT_THAT(machine.log.lines(),
                ElementsAre("Corvane daemon: opened SMC, 1 fans, 1 CPU keys, 1 safety keys, 0 GPU keys",
                            "Corvane daemon: reset to Apple-auto control on startup (safety)"));
}

TEST(StartUp, SortsSensorsByTheirFamilies) {
    HelperMachine machine(macWithSensors({sensor::fixed("Tc0a", 35.0F), sensor::fixed("Te05", 35.0F),
                                          sensor::fixed("Tg0f", 35.0F), sensor::fixed("Tp09", 35.0F),
                                          sensor::fixed("TP0P", 35.0F), sensor::fixed("Ts0P", 35.0F),
                                          sensor::fixed("tp09", 35.0F)}));
    machine.start();
    EXPECT_EQ(machine.log.lines().at(0),
              "Corvane daemon: opened SMC, 1 fans, 2 CPU keys, 4 safety keys, 1 GPU keys");
}

TEST(StartUp, KeepsACpuKeyForBothAnEfficiencyKeyForSafetyOnlyAndAGpuKeyForBothOthers) {
    const auto found = [](std::string_view key) {
        HelperMachine machine(macWithSensors({sensor::fixed(key, 35.0F)}));
        machine.start();
        return machine.log.lines().at(0).substr(std::string_view("Corvane daemon: opened SMC, ").size());
    };
    EXPECT_EQ(found("Tc0a"), "1 fans, 1 CPU keys, 1 safety keys, 0 GPU keys");
    EXPECT_EQ(found("Te05"), "1 fans, 0 CPU keys, 1 safety keys, 0 GPU keys");
    EXPECT_EQ(found("Tg0f"), "1 fans, 0 CPU keys, 1 safety keys, 1 GPU keys");
}

TEST(StartUp, KeepsOnlySensorsThatReadStrictlyBetween5And120Degrees) {
    struct Case {
        float celsius;
        int keys;
    };
    for (const Case& example : {Case{5.0F, 0},
                                {5.01F, 1},
                                {119.9F, 1},
                                {120.0F, 0},
                                {121.0F, 0},
                                {-20.0F, 0},
                                {infinite<float>, 0},
                                {-infinite<float>, 0},
                                {notANumber<float>, 0}}) {
        HelperMachine machine;
        machine.mac.holdSensorsAt(example.celsius);
        machine.start();
        EXPECT_EQ(sensorCount(machine), example.keys) << example.celsius;
    }
}

TEST(StartUp, NeverUsesASensorThatReadImplausiblyThen) {
    HelperMachine machine;
    machine.startAt(121.0F);
    machine.mac.holdSensorsAt(60.0F);
    machine.setFloor(30.0);
    EXPECT_EQ(machine.log.count("no temp sensors — refusing manual control for safety"), 1U);
    EXPECT_EQ(sensorCount(machine), 0);
}

TEST(StartUp, LeavesOutSensorsThatCannotBeReadOrHaveAnotherType) {
    HelperMachine machine(
        macWithSensors({sensor::fixed("Tp00", 50.0F), sensor::fixed("Tp01", 50.0F, SensorType::ioft),
                        sensor::fixed("Tp02", 50.0F, SensorType::si32), sensor::fixed("Tp03", 50.0F)}));
    machine.mac.setFault("Tp00", KeyFault::readFails());
    machine.start();
    EXPECT_EQ(sensorCount(machine), 1);
}

TEST(StartUp, HandsEveryFanBackBeforeAnythingElseIsWritten) {
    HelperMachine machine(twoFanMac());
    machine.start();
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("Ftst=0", "F0Md=0", "F1Md=0"));
    machine.advance(10s);
    EXPECT_EQ(machine.writes.size(), 3U);
}

TEST(StartUp, TakesFansBackFromAnEarlierHelperThatDied) {
    HelperMachine machine(twoFanMac());
    csmc_write_u8("F0Md", 1);
    csmc_write_u8("F1Md", 1);
    ASSERT_TRUE(machine.mac.isFanForced(0));
    machine.start();
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(StartUp, DoesNotWaitForAFanThatStaysForced) {
    HelperMachine machine;
    machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1));
    csmc_write_u8("F0Md", 1);
    machine.start();
    EXPECT_EQ(machine.now(), 0s);
    EXPECT_EQ(machine.log.lines().size(), 2U);
}

TEST(StartUp, UsesTheMachinesOwnSpellingOfTheModeKey) {
    HelperMachine machine(lowerCaseMac());
    machine.start();
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("Ftst=0", "F0md=0"));
}

TEST(StartUp, TruncatesTheFansLimits) {
    HelperMachine machine;
    machine.mac.holdSensor("F0Mn", 1499.9F);
    machine.mac.holdSensor("F0Mx", 5348.7F);
    machine.start();
    EXPECT_EQ(*onlyFan(machine).get<std::int32_t>(StatusKey::minRPM), 1499);
    EXPECT_EQ(*onlyFan(machine).get<std::int32_t>(StatusKey::maxRPM), 5348);
}

TEST(StartUp, TakesLimitsThatCannotBeReadAsZero) {
    for (const float reading : {infinite<float>, notANumber<float>, 1e30F, -1.0F}) {
        HelperMachine machine;
        machine.mac.holdSensor("F0Mn", reading);
        machine.mac.setFault("F0Mx", KeyFault::readFails());
        machine.start();
        EXPECT_EQ(*onlyFan(machine).get<std::int32_t>(StatusKey::minRPM), 0) << reading;
        EXPECT_EQ(*onlyFan(machine).get<std::int32_t>(StatusKey::maxRPM), 0) << reading;
    }
}

TEST(StartUp, LearnsTheLimitsOnce) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.mac.holdSensor("F0Mn", 0.0F);
    machine.mac.holdSensor("F0Mx", 10000.0F);
    machine.setFloor(50.0);
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), 3000.0F);
}

TEST(StartUp, HasNoFansWhenTheirNumberCannotBeRead) {
    HelperMachine machine;
    machine.mac.setFault("FNum", KeyFault::readFails());
    machine.start();
    EXPECT_EQ(machine.ping(), (Answer{true, "Corvane daemon alive, fans=0"}));
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("Ftst=0"));
}

TEST(StartUp, LivesWithAsManyFansAsAByteCounts) {
    HelperMachine machine;
    machine.mac.holdSensor("FNum", 255.0F);
    machine.startAt(60.0F);
    EXPECT_EQ(machine.ping(), (Answer{true, "Corvane daemon alive, fans=255"}));
    machine.setFloor(50.0);
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), 3000.0F);
    machine.stopBoost();
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(StartUp, WorksWithoutAnSmc) {
    HelperMachine machine;
    machine.mac.setSmcPresent(false);
    machine.start();
    EXPECT_THAT(machine.log.lines(),
                ElementsAre("Corvane daemon: opened SMC, 0 fans, 0 CPU keys, 0 safety keys, 0 GPU keys",
                            "Corvane daemon: reset to Apple-auto control on startup (safety)"));
    EXPECT_EQ(machine.ping(), (Answer{true, "Corvane daemon alive, fans=0"}));
    EXPECT_EQ(sensorCount(machine), 0);

    machine.log.clear();
    EXPECT_EQ(machine.setFloor(50.0), (Answer{true, "floor set to 50%"}));
    EXPECT_THAT(
        machine.log.lines(),
        ElementsAre(loopStarted, "Corvane daemon: no temp sensors — refusing manual control for safety",
                    released));
    EXPECT_FALSE(machine.isBoosted());
    EXPECT_EQ(machine.setLid(true), (Answer{true, "lid-stay-awake on"}));
    EXPECT_EQ(machine.stopBoost(), (Answer{true, "boost stopped"}));
}

TEST(StartUp, IsIdle) {
    HelperMachine machine;
    machine.startAt(90.0F);
    const StatusRecord status = machine.status();
    EXPECT_FALSE(*status.get<bool>(StatusKey::isBoosted));
    EXPECT_FALSE(*status.get<bool>(StatusKey::lidStayAwake));
    EXPECT_EQ(*status.get<double>(StatusKey::floorPercent), 0.0);
    EXPECT_TRUE(machine.sleepSetting.calls().empty()) << "the lid setting is assumed off";
}

}  // namespace
}  // namespace corvane
