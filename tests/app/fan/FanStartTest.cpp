#include <gtest/gtest.h>

#include "tests/app/fan/FanMachine.h"

namespace corvane {
namespace {

TEST(FanStart, ShowsTheHelpersFirstRecordAtOnce) {
    FanMachine machine;
    machine.helper.mac.holdSensorsAt(50);
    machine.open();
    EXPECT_EQ(machine.host.launchCount(), 1);
    EXPECT_EQ(machine.fan->cpuTemp(), 50);
    EXPECT_EQ(machine.fan->fans().size(), 1);
}

TEST(FanStart, TurnsAFanThroughTheRealHelper) {
    FanMachine machine;
    machine.openAt(50);
    machine.fan->setCoolingMode(CoolingMode::manual);
    machine.fan->setFansEnabled(true);
    machine.advance(2s);
    EXPECT_TRUE(machine.fan->isBoosted());
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_EQ(machine.fan->boostRemainingText(), "9:58");
    machine.fan->setFansEnabled(false);
    machine.advance(5s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

}  // namespace
}  // namespace corvane
