#include <array>
#include <limits>
#include <string_view>

#include <gtest/gtest.h>

#include "core/ThermalCurve.h"

namespace corvane {
namespace {

TEST(ThermalCurve, HasTheseTemperaturesAndFamiliesOfSensors) {
    EXPECT_EQ(ThermalCurve::rampStartC, 72.0);
    EXPECT_EQ(ThermalCurve::fullSpeedC, 95.0);
    EXPECT_EQ(ThermalCurve::warnThresholdC, 85.0);
    EXPECT_EQ(ThermalCurve::criticalReleaseC, 100.0);
    EXPECT_EQ(ThermalCurve::safetyPrefixes, (std::array<std::string_view, 4>{"Tp", "Te", "Tc", "Tg"}));
}

TEST(ThermalCurve, RisesInAStraightLineFrom72To95Degrees) {
    EXPECT_EQ(ThermalCurve::requiredPercent(72.0), 0.0);
    EXPECT_NEAR(ThermalCurve::requiredPercent(72.0001), 0.000435, 1e-5);
    EXPECT_EQ(ThermalCurve::requiredPercent(83.5), 50.0);
    EXPECT_LT(ThermalCurve::requiredPercent(94.9999), 100.0);
    EXPECT_GT(ThermalCurve::requiredPercent(94.9999), 99.999);
    EXPECT_EQ(ThermalCurve::requiredPercent(95.0), 100.0);
}

TEST(ThermalCurve, IsFlatOutsideTheRamp) {
    EXPECT_EQ(ThermalCurve::requiredPercent(-40.0), 0.0);
    EXPECT_EQ(ThermalCurve::requiredPercent(150.0), 100.0);
    EXPECT_EQ(ThermalCurve::requiredPercent(std::numeric_limits<double>::infinity()), 100.0);
    EXPECT_EQ(ThermalCurve::requiredPercent(-std::numeric_limits<double>::infinity()), 0.0);
}

TEST(ThermalCurve, AsksForFullSpeedWhenTheTemperatureIsNotANumber) {
    EXPECT_EQ(ThermalCurve::requiredPercent(std::numeric_limits<double>::quiet_NaN()), 100.0);
}

TEST(ThermalCurve, CallsHeatCriticalFromExactlyOneHundredDegrees) {
    EXPECT_FALSE(ThermalCurve::isCritical(99.999));
    EXPECT_TRUE(ThermalCurve::isCritical(100.0));
    EXPECT_FALSE(ThermalCurve::isCritical(std::numeric_limits<double>::quiet_NaN()));
}

TEST(ThermalCurve, CallsHeatGenuineFromExactly85Degrees) {
    EXPECT_FALSE(ThermalCurve::isGenuineHeat(84.999));
    EXPECT_TRUE(ThermalCurve::isGenuineHeat(85.0));
}

TEST(ThermalCurve, CountsExactlyTheFourFamiliesOfFourCharacterKeysAsSafetySensors) {
    for (const char* key : {"Tp09", "Te05", "Tc0a", "Tg0f"}) {
        EXPECT_TRUE(ThermalCurve::isSafetyTempKey(key)) << key;
    }
    for (const char* key : {"TP09", "Tp0", "Tp091", "Ts0P", "tp09", "", "Tp"}) {
        EXPECT_FALSE(ThermalCurve::isSafetyTempKey(key)) << key;
    }
}

}  // namespace
}  // namespace corvane
