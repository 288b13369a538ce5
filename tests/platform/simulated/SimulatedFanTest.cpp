#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedFan.h"

namespace corvane {
namespace {

constexpr FanLimits limits{1000.0F, 5000.0F};
constexpr double cold = 40.0;

void run(SimulatedFan& fan, double seconds, double dieTemperature) {
    for (long i = 0; i < std::lround(seconds * 20.0); ++i) {
        fan.step(0.05, dieTemperature);
    }
}

SimulatedFan laptopFan() {
    return {limits, FirmwareCurve::laptop()};
}

TEST(SimulatedFan, StandsOnACoolLaptopAndTurnsOnACoolDesktop) {
    EXPECT_EQ(laptopFan().speed(), 0.0);
    EXPECT_EQ(laptopFan().target(), 0.0F);
    SimulatedFan desktop(limits, FirmwareCurve::desktop());
    EXPECT_EQ(desktop.speed(), 1000.0);
    run(desktop, 60.0, -20.0);
    EXPECT_EQ(desktop.speed(), 1000.0);
}

TEST(SimulatedFan, IsStartedAt66DegreesAndStoppedBelow52) {
    SimulatedFan fan = laptopFan();
    run(fan, 10.0, 65.9);
    EXPECT_EQ(fan.speed(), 0.0);
    run(fan, 10.0, 66.0);
    EXPECT_EQ(fan.speed(), 1000.0);
    run(fan, 10.0, 52.0);
    EXPECT_EQ(fan.speed(), 1000.0);
    run(fan, 10.0, 51.9);
    EXPECT_EQ(fan.speed(), 0.0);
    run(fan, 10.0, 65.9);
    EXPECT_EQ(fan.speed(), 0.0);
}

TEST(SimulatedFan, RisesInAStraightLineFrom75To102Degrees) {
    SimulatedFan fan = laptopFan();
    run(fan, 60.0, 75.0);
    EXPECT_DOUBLE_EQ(fan.speed(), 1000.0);
    run(fan, 60.0, 88.5);
    EXPECT_DOUBLE_EQ(fan.speed(), 3000.0);
    run(fan, 60.0, 102.0);
    EXPECT_DOUBLE_EQ(fan.speed(), 5000.0);
    run(fan, 60.0, 120.0);
    EXPECT_DOUBLE_EQ(fan.speed(), 5000.0);
}

TEST(SimulatedFan, SpeedsUpBy400AndSlowsDownBy200PerSecond) {
    SimulatedFan fan = laptopFan();
    run(fan, 1.0, 110.0);
    EXPECT_NEAR(fan.speed(), 400.0, 1e-6);
    run(fan, 5.0, 110.0);
    EXPECT_NEAR(fan.speed(), 2400.0, 1e-6);
    run(fan, 3.0, cold);
    EXPECT_NEAR(fan.speed(), 1800.0, 1e-6);
    run(fan, 9.5, cold);
    EXPECT_EQ(fan.speed(), 0.0);
}

TEST(SimulatedFan, KeepsTheFirmwaresTargetWhenItIsForced) {
    SimulatedFan fan = laptopFan();
    run(fan, 60.0, 88.5);
    fan.force();
    EXPECT_EQ(fan.target(), 3000.0F);
    run(fan, 60.0, 110.0);
    EXPECT_DOUBLE_EQ(fan.speed(), 3000.0) << "the firmware has no say";
}

TEST(SimulatedFan, FollowsItsTargetOnlyWhileForced) {
    SimulatedFan fan = laptopFan();
    fan.setTarget(4000.0F);
    run(fan, 30.0, cold);
    EXPECT_EQ(fan.speed(), 0.0);
    fan.force();
    fan.setTarget(4000.0F);
    fan.force();
    EXPECT_EQ(fan.target(), 4000.0F) << "forcing again changes nothing";
    run(fan, 30.0, cold);
    EXPECT_EQ(fan.speed(), 4000.0);
    fan.handBack();
    EXPECT_EQ(fan.target(), 0.0F);
    run(fan, 30.0, cold);
    EXPECT_EQ(fan.speed(), 0.0);
}

TEST(SimulatedFan, KeepsToWhatAFanCanDo) {
    SimulatedFan fan = laptopFan();
    fan.force();
    const auto speedFor = [&](float target) {
        fan.setTarget(target);
        run(fan, 60.0, cold);
        return fan.speed();
    };
    EXPECT_EQ(speedFor(9000.0F), 5000.0);
    EXPECT_EQ(speedFor(std::numeric_limits<float>::infinity()), 5000.0);
    EXPECT_EQ(speedFor(300.0F), 1000.0);
    EXPECT_EQ(speedFor(0.0F), 0.0);
    EXPECT_EQ(speedFor(5000.0F), 5000.0);
    EXPECT_EQ(speedFor(-300.0F), 0.0);
    EXPECT_EQ(speedFor(5000.0F), 5000.0);
    EXPECT_EQ(speedFor(std::numeric_limits<float>::quiet_NaN()), 0.0);
}

}  // namespace
}  // namespace corvane
