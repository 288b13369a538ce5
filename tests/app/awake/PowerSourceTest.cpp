#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "app/awake/PowerSource.h"
#include "platform/simulated/SimulatedPowerSources.h"

namespace corvane {
namespace {

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

PowerSourceDescription charged(std::optional<int> now, std::optional<int> full) {
    return {.currentCapacity = now, .maxCapacity = full, .state = "Battery Power", .isCharging = false};
}

PowerSourceDescription fed(std::optional<std::string> state, std::optional<bool> isCharging) {
    return {.currentCapacity = 50, .maxCapacity = 100, .state = std::move(state), .isCharging = isCharging};
}

class PowerSourceTest : public testing::Test {
protected:
    PowerInfo currentOf(const PowerSourceDescription& source) {
        sources.set({source});
        return PowerSource::current(sources);
    }

    std::optional<int> percentageOf(std::optional<int> now, std::optional<int> full) {
        return currentOf(charged(now, full)).percentage;
    }

    SimulatedPowerSources sources;
};

TEST_F(PowerSourceTest, CountsAComputerWithoutPowerSourcesAsOnACWithoutABattery) {
    const PowerInfo info = PowerSource::current(sources);
    EXPECT_FALSE(info.hasBattery);
    EXPECT_TRUE(info.onAC);
    EXPECT_EQ(info.percentage, std::nullopt);
    EXPECT_FALSE(info.isCharging);
}

TEST_F(PowerSourceTest, CountsSourcesWithoutAnyDescriptionAsNone) {
    sources.set({std::nullopt, std::nullopt});
    EXPECT_EQ(PowerSource::current(sources), PowerInfo());
}

TEST_F(PowerSourceTest, TellsTheChargeOfABattery) {
    const PowerInfo info = currentOf(charged(57, 100));
    EXPECT_TRUE(info.hasBattery);
    EXPECT_FALSE(info.onAC);
    EXPECT_EQ(info.percentage, 57);
    EXPECT_FALSE(info.isCharging);
}

TEST_F(PowerSourceTest, RoundsHalvesUp) {
    EXPECT_EQ(percentageOf(3, 8), 38);       // 37.5
    EXPECT_EQ(percentageOf(1, 200), 1);      // 0.5
    EXPECT_EQ(percentageOf(199, 200), 100);  // 99.5
    EXPECT_EQ(percentageOf(374, 1000), 37);
    EXPECT_EQ(percentageOf(499, 100'000), 0);
}

TEST_F(PowerSourceTest, KeepsTheChargeWithinZeroAndAHundred) {
    EXPECT_EQ(percentageOf(0, 100), 0);
    EXPECT_EQ(percentageOf(100, 100), 100);
    EXPECT_EQ(percentageOf(110, 100), 100);
    EXPECT_EQ(percentageOf(-1, 200), 0);
    EXPECT_EQ(percentageOf(-50, 100), 0);
}

TEST_F(PowerSourceTest, CopesWithTheLargestNumbers) {
    EXPECT_EQ(percentageOf(largest, 1), 100);
    EXPECT_EQ(percentageOf(largest, largest), 100);
    EXPECT_EQ(percentageOf(largest / 2, largest), 50);
    EXPECT_EQ(percentageOf(smallest, largest), 0);
    EXPECT_EQ(percentageOf(smallest, 1), 0);
    EXPECT_EQ(percentageOf(1, largest), 0);
}

TEST_F(PowerSourceTest, TellsNoChargeThatItCannotCompute) {
    EXPECT_EQ(percentageOf(std::nullopt, 100), std::nullopt);
    EXPECT_EQ(percentageOf(57, std::nullopt), std::nullopt);
    EXPECT_EQ(percentageOf(0, 0), std::nullopt);
    EXPECT_EQ(percentageOf(57, -100), std::nullopt);
    EXPECT_EQ(percentageOf(-57, smallest), std::nullopt);
    EXPECT_TRUE(currentOf(charged(57, 0)).hasBattery);
}

TEST_F(PowerSourceTest, IsOnACWhenTheStateSaysExactlySo) {
    EXPECT_TRUE(currentOf(fed("AC Power", false)).onAC);
    EXPECT_FALSE(currentOf(fed("Battery Power", false)).onAC);
    EXPECT_FALSE(currentOf(fed("Off Line", false)).onAC);
    EXPECT_FALSE(currentOf(fed("ac power", false)).onAC);
    EXPECT_FALSE(currentOf(fed("AC Power ", false)).onAC);
    EXPECT_FALSE(currentOf(fed("", false)).onAC);
    EXPECT_FALSE(currentOf(fed(std::nullopt, false)).onAC);
}

TEST_F(PowerSourceTest, IsChargingOnlyWhenTheSourceSaysSo) {
    EXPECT_TRUE(currentOf(fed("AC Power", true)).isCharging);
    const PowerInfo silent = currentOf(fed("AC Power", std::nullopt));
    EXPECT_FALSE(silent.isCharging);
    EXPECT_TRUE(silent.onAC);
    EXPECT_TRUE(currentOf(fed("Battery Power", true)).isCharging) << "whatever the state says";
}

TEST_F(PowerSourceTest, CountsASourceThatSaysNothingAsABatteryInUse) {
    EXPECT_EQ(
        currentOf({}),
        (PowerInfo{.hasBattery = true, .onAC = false, .percentage = std::nullopt, .isCharging = false}));
}

TEST_F(PowerSourceTest, UsesTheFirstSourceAlone) {
    sources.set({charged(20, 100), fed("AC Power", true)});
    const PowerInfo info = PowerSource::current(sources);
    EXPECT_EQ(info.percentage, 20);
    EXPECT_FALSE(info.onAC);
    EXPECT_FALSE(info.isCharging);
}

TEST_F(PowerSourceTest, TakesNothingFromALaterSourceThatTheFirstDoesNotSay) {
    sources.set({PowerSourceDescription{}, fed("AC Power", true)});
    EXPECT_FALSE(PowerSource::current(sources).onAC);
    EXPECT_EQ(PowerSource::current(sources).percentage, std::nullopt);
}

TEST_F(PowerSourceTest, PassesOverSourcesWithoutADescription) {
    sources.set({std::nullopt, std::nullopt, charged(20, 100), charged(90, 100)});
    EXPECT_EQ(PowerSource::current(sources).percentage, 20);
}

TEST_F(PowerSourceTest, ReadsAfreshEachTime) {
    EXPECT_EQ(currentOf(charged(20, 100)).percentage, 20);
    EXPECT_EQ(currentOf(charged(19, 100)).percentage, 19);
    sources.set({});
    EXPECT_FALSE(PowerSource::current(sources).hasBattery);
}

}  // namespace
}  // namespace corvane
