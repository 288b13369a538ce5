#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "app/menu/BatteryChip.h"

namespace corvane {
namespace {

PowerInfo charged(std::optional<int> percentage) {
    return {.hasBattery = true, .onAC = false, .percentage = percentage, .isCharging = false};
}

std::string symbol(std::optional<int> percentage) {
    return BatteryChip::symbol(charged(percentage)).toStdString();
}

TEST(BatteryChip, ShowsTheNearestQuarter) {
    EXPECT_EQ(symbol(0), "battery.0");
    EXPECT_EQ(symbol(12), "battery.0");
    EXPECT_EQ(symbol(13), "battery.25");
    EXPECT_EQ(symbol(25), "battery.25");
    EXPECT_EQ(symbol(37), "battery.25");
    EXPECT_EQ(symbol(38), "battery.50");
    EXPECT_EQ(symbol(62), "battery.50");
    EXPECT_EQ(symbol(63), "battery.75");
    EXPECT_EQ(symbol(87), "battery.75");
    EXPECT_EQ(symbol(88), "battery.100");
    EXPECT_EQ(symbol(100), "battery.100");
}

TEST(BatteryChip, ShowsABoltWhileCharging) {
    for (const int percentage : {0, 50, 100}) {
        PowerInfo power = charged(percentage);
        power.isCharging = true;
        EXPECT_EQ(BatteryChip::symbol(power), "battery.100.bolt");
    }
}

TEST(BatteryChip, IsEmptyAndSaysNoNumberWhenTheChargeIsNotKnown) {
    EXPECT_EQ(symbol(std::nullopt), "battery.0");
    EXPECT_EQ(BatteryChip::charge(charged(std::nullopt)), "");
    EXPECT_FALSE(BatteryChip::isLow(charged(std::nullopt)));
}

TEST(BatteryChip, SaysTheChargeInPercent) {
    EXPECT_EQ(BatteryChip::charge(charged(0)), "0%");
    EXPECT_EQ(BatteryChip::charge(charged(85)), "85%");
    EXPECT_EQ(BatteryChip::charge(charged(100)), "100%");
}

TEST(BatteryChip, WarnsAtTwentyPercentAndBelow) {
    EXPECT_TRUE(BatteryChip::isLow(charged(0)));
    EXPECT_TRUE(BatteryChip::isLow(charged(20)));
    EXPECT_FALSE(BatteryChip::isLow(charged(21)));
}

}  // namespace
}  // namespace corvane
