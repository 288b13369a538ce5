#include "tests/helper/HelperMachine.h"
#include "tests/support/oddNumbers.h"

namespace corvane {
namespace {

using testing::ElementsAre;

/// A CPU, an efficiency and two GPU sensors, all at 50 degrees.
MacModel sensorsMac() {
    return macWithSensors({sensor::fixed("Tc0a", 50.0F), sensor::fixed("Te05", 50.0F),
                           sensor::fixed("Tg0f", 50.0F), sensor::fixed("Tg0j", 50.0F),
                           sensor::fixed("Tp09", 50.0F)});
}

std::vector<std::string> keysOf(const StatusRecord& record) {
    std::vector<std::string> keys;
    for (const auto& [key, value] : record.entries()) {
        keys.push_back(key);
    }
    return keys;
}

const std::vector<StatusRecord>& fansOf(const StatusRecord& status) {
    return *status.get<std::vector<StatusRecord>>(StatusKey::fans);
}

std::int32_t fanValue(HelperMachine& machine, std::string_view key) {
    return *fansOf(machine.status()).at(0).get<std::int32_t>(key);
}

TEST(Status, HasItsKeysInOrder) {
    HelperMachine machine(sensorsMac());
    machine.start();
    EXPECT_THAT(keysOf(machine.status()),
                ElementsAre("fans", "floorPercent", "isBoosted", "tempSensorCount", "effectivePercent",
                            "thermalOverride", "lidStayAwake", "cpuTemp", "cpuTempMax", "gpuTemp"));
}

TEST(Status, HasTheKeysOfAFanInOrder) {
    HelperMachine machine(twoFanMac());
    machine.start();
    const StatusRecord status = machine.status();
    ASSERT_EQ(fansOf(status).size(), 2U);
    for (const StatusRecord& fan : fansOf(status)) {
        EXPECT_THAT(keysOf(fan), ElementsAre("index", "currentRPM", "minRPM", "maxRPM", "targetRPM", "mode"));
        for (const auto& [key, value] : fan.entries()) {
            EXPECT_TRUE(std::holds_alternative<std::int32_t>(value)) << key;
        }
    }
}

TEST(Status, TellsOfAnIdleHelper) {
    HelperMachine machine(sensorsMac());
    machine.start();
    const StatusRecord status = machine.status();
    EXPECT_EQ(*status.get<double>(StatusKey::floorPercent), 0.0);
    EXPECT_EQ(*status.get<bool>(StatusKey::isBoosted), false);
    EXPECT_EQ(*status.get<std::int32_t>(StatusKey::tempSensorCount), 2);
    EXPECT_EQ(*status.get<double>(StatusKey::effectivePercent), 0.0);
    EXPECT_EQ(*status.get<bool>(StatusKey::thermalOverride), false);
    EXPECT_EQ(*status.get<bool>(StatusKey::lidStayAwake), false);
    EXPECT_EQ(*status.get<double>(StatusKey::cpuTemp), 50.0);
    EXPECT_EQ(*status.get<double>(StatusKey::cpuTempMax), 50.0);
    EXPECT_EQ(*status.get<double>(StatusKey::gpuTemp), 50.0);
}

TEST(Status, TellsOfABoost) {
    HelperMachine machine(twoFanMac());
    machine.startAt(90.0F);
    machine.setFloor(42.9);
    machine.setLid(true);
    machine.advanceInContact(30s);
    const StatusRecord status = machine.status();
    EXPECT_EQ(*status.get<double>(StatusKey::floorPercent), 42.9);
    EXPECT_EQ(*status.get<bool>(StatusKey::isBoosted), true);
    EXPECT_NEAR(*status.get<double>(StatusKey::effectivePercent), 78.2609, 0.0001);
    EXPECT_EQ(*status.get<bool>(StatusKey::lidStayAwake), true);
    const StatusRecord& second = fansOf(status).at(1);
    EXPECT_EQ(*second.get<std::int32_t>(StatusKey::index), 1);
    EXPECT_NEAR(*second.get<std::int32_t>(StatusKey::currentRPM), 4630, 20);
    EXPECT_EQ(*second.get<std::int32_t>(StatusKey::minRPM), 1500);
    EXPECT_EQ(*second.get<std::int32_t>(StatusKey::maxRPM), 5500);
    EXPECT_EQ(*second.get<std::int32_t>(StatusKey::targetRPM), 4630);
    EXPECT_EQ(*second.get<std::int32_t>(StatusKey::mode), 1);
}

TEST(Status, TellsOfTheFloorAsTheEffectivePercentageWhenItIsCool) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(42.9);
    EXPECT_EQ(*machine.status().get<double>(StatusKey::effectivePercent), 42.9);
    machine.stopBoost();
    EXPECT_EQ(*machine.status().get<double>(StatusKey::effectivePercent), 0.0);
}

bool isOverridden(float celsius, double floor) {
    HelperMachine machine;
    machine.startAt(celsius);
    machine.setFloor(floor);
    return *machine.status().get<bool>(StatusKey::thermalOverride);
}

TEST(Status, CallsGenuineHeatThatExceedsTheFloorAnOverride) {
    EXPECT_TRUE(isOverridden(90.0F, 30.0));
    EXPECT_FALSE(isOverridden(90.0F, 100.0));
    EXPECT_FALSE(isOverridden(60.0F, 30.0));
}

TEST(Status, CallsItAnOverrideFrom85DegreesOn) {
    EXPECT_TRUE(isOverridden(85.0F, 10.0));
    EXPECT_FALSE(isOverridden(84.99F, 10.0));
}

TEST(Status, CallsItAnOverrideOnlyAboveOnePointMoreThanTheFloor) {
    // 95 degrees ask for exactly 100 %.
    EXPECT_TRUE(isOverridden(95.0F, 98.99));
    EXPECT_FALSE(isOverridden(95.0F, 99.0));
}

bool isOverridden(HelperMachine& machine) {
    return *machine.status().get<bool>(StatusKey::thermalOverride);
}

TEST(Status, CallsHeatAnOverrideOnceTheMedianOfFiveReadingsHasIt) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(10.0);
    machine.advance(3s);
    machine.mac.holdSensorsAt(99.0F);
    for (const bool expected : {false, false, true}) {
        machine.advance(800ms);
        EXPECT_EQ(isOverridden(machine), expected);
    }
}

TEST(Status, CallsHeatAnOverrideAtTheTickThatReadsIt) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(10.0);
    machine.mac.holdSensorsAt(99.0F);
    EXPECT_FALSE(isOverridden(machine));
    machine.advance(100ms);
    EXPECT_FALSE(isOverridden(machine)) << "every second tick reads nothing";
    machine.advance(400ms);
    EXPECT_TRUE(isOverridden(machine));
    machine.mac.holdSensorsAt(60.0F);
    EXPECT_TRUE(isOverridden(machine)) << "until the next reading";
}

TEST(Status, CallsNothingAnOverrideOnceReleased) {
    HelperMachine machine;
    machine.startAt(90.0F);
    machine.setFloor(30.0);
    machine.stopBoost();
    EXPECT_FALSE(*machine.status().get<bool>(StatusKey::thermalOverride));
}

TEST(Status, AveragesTheCpuAndNamesItsMaximum) {
    HelperMachine machine(sensorsMac());
    machine.start();
    machine.mac.holdSensor("Tc0a", 40.0F);
    machine.mac.holdSensor("Tp09", 70.0F);
    machine.mac.holdSensor("Te05", 90.0F);
    EXPECT_EQ(*machine.status().get<double>(StatusKey::cpuTemp), 55.0);
    EXPECT_EQ(*machine.status().get<double>(StatusKey::cpuTempMax), 70.0);
}

TEST(Status, AveragesTheGpu) {
    HelperMachine machine(sensorsMac());
    machine.start();
    machine.mac.holdSensor("Tg0f", 40.0F);
    machine.mac.holdSensor("Tg0j", 70.0F);
    EXPECT_EQ(*machine.status().get<double>(StatusKey::gpuTemp), 55.0);
}

TEST(Status, CountsCpuReadingsAbove20DegreesWithoutAnUpperBound) {
    HelperMachine machine(sensorsMac());
    machine.start();
    for (const float ignored : {20.0F, 0.0F, -5.0F, infinite<float>, -infinite<float>, notANumber<float>}) {
        machine.mac.holdSensor("Tc0a", ignored);
        EXPECT_EQ(*machine.status().get<double>(StatusKey::cpuTemp), 50.0) << ignored;
        EXPECT_EQ(*machine.status().get<double>(StatusKey::cpuTempMax), 50.0) << ignored;
    }
    machine.mac.holdSensor("Tc0a", 20.5F);
    EXPECT_EQ(*machine.status().get<double>(StatusKey::cpuTemp), 35.25);
    machine.mac.holdSensor("Tc0a", 500.0F);
    EXPECT_EQ(*machine.status().get<double>(StatusKey::cpuTempMax), 500.0);
}

TEST(Status, CountsGpuReadingsStrictlyBetween20And130Degrees) {
    HelperMachine machine(sensorsMac());
    machine.start();
    for (const float ignored :
         {20.0F, 130.0F, 131.0F, infinite<float>, -infinite<float>, notANumber<float>}) {
        machine.mac.holdSensor("Tg0f", ignored);
        EXPECT_EQ(*machine.status().get<double>(StatusKey::gpuTemp), 50.0) << ignored;
    }
    machine.mac.holdSensor("Tg0f", 129.5F);
    EXPECT_EQ(*machine.status().get<double>(StatusKey::gpuTemp), 89.75);
}

TEST(Status, SkipsSensorsThatCannotBeRead) {
    HelperMachine machine(sensorsMac());
    machine.start();
    machine.mac.setFault("Tc0a", KeyFault::vanished());
    machine.mac.setFault("Tg0f", KeyFault::readFails());
    EXPECT_EQ(*machine.status().get<double>(StatusKey::cpuTemp), 50.0);
    EXPECT_EQ(*machine.status().get<double>(StatusKey::gpuTemp), 50.0);
}

TEST(Status, LacksTemperaturesThatCannotBeReadButStillCountsTheSensors) {
    HelperMachine machine(sensorsMac());
    machine.start();
    machine.mac.setFault("T*", KeyFault::readFails());
    EXPECT_THAT(keysOf(machine.status()), ElementsAre("fans", "floorPercent", "isBoosted", "tempSensorCount",
                                                      "effectivePercent", "thermalOverride", "lidStayAwake"));
    EXPECT_EQ(*machine.status().get<std::int32_t>(StatusKey::tempSensorCount), 2);
}

TEST(Status, LacksOneTemperatureWithoutTheOther) {
    HelperMachine machine(sensorsMac());
    machine.start();
    machine.mac.setFault("Tg*", KeyFault::readFails());
    EXPECT_FALSE(machine.status().contains(StatusKey::gpuTemp));
    EXPECT_TRUE(machine.status().contains(StatusKey::cpuTemp));
    machine.mac.clearFaults();
    machine.mac.setFault("Tp09", KeyFault::readFails());
    machine.mac.setFault("Tc0a", KeyFault::readFails());
    EXPECT_TRUE(machine.status().contains(StatusKey::gpuTemp));
    EXPECT_FALSE(machine.status().contains(StatusKey::cpuTemp));
    EXPECT_FALSE(machine.status().contains(StatusKey::cpuTempMax));
}

TEST(Status, TruncatesSpeedsTowardsZero) {
    HelperMachine machine;
    machine.start();
    machine.mac.holdSensor("F0Ac", 1234.9F);
    machine.mac.holdSensor("F0Tg", -12.7F);
    EXPECT_EQ(fanValue(machine, StatusKey::currentRPM), 1234);
    EXPECT_EQ(fanValue(machine, StatusKey::targetRPM), -12);
}

TEST(Status, TellsZeroForFanValuesThatCannotBeRead) {
    HelperMachine machine;
    machine.start();
    machine.mac.setFault("F0Ac", KeyFault::readFails());
    machine.mac.setFault("F0Tg", KeyFault::vanished());
    machine.mac.setFault("F0Md", KeyFault::vanished());
    EXPECT_EQ(fanValue(machine, StatusKey::currentRPM), 0);
    EXPECT_EQ(fanValue(machine, StatusKey::targetRPM), 0);
    EXPECT_EQ(fanValue(machine, StatusKey::mode), 0);
    machine.mac.clearFaults();
    for (const float reading : {infinite<float>, -infinite<float>, notANumber<float>, 1e30F}) {
        machine.mac.holdSensor("F0Ac", reading);
        EXPECT_EQ(fanValue(machine, StatusKey::currentRPM), 0) << reading;
    }
}

TEST(Status, ReadsTheUpperCaseModeKeyEvenWhereTheLoopWritesTheOther) {
    HelperMachine machine(lowerCaseMac());
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    ASSERT_TRUE(machine.mac.isFanForced(0));
    EXPECT_EQ(fanValue(machine, StatusKey::mode), 0);
}

TEST(Status, TellsTheModeAsItIsNow) {
    HelperMachine machine;
    machine.start();
    machine.mac.setFault("F0Md", KeyFault::neverAutomatic(3));
    EXPECT_EQ(fanValue(machine, StatusKey::mode), 3);
}

TEST(Status, HasAnEmptyArrayOfFansOnAMachineWithoutAny) {
    HelperMachine machine(macBookAir());
    machine.start();
    EXPECT_TRUE(fansOf(machine.status()).empty());
}

}  // namespace
}  // namespace corvane
