#include <gtest/gtest.h>

#include "tests/app/fan/FanMachine.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;
using Texts = std::vector<std::string>;

struct FanSuspend : testing::Test {
    FanController& fan() { return *machine.fan; }

    void switchOn(float celsius, CoolingMode mode) {
        machine.openAt(celsius);
        fan().setCoolingMode(mode);
        fan().setFansEnabled(true);
        machine.advance(10s);
        static_cast<void>(machine.takeRequests());
    }
    /// The machine is suspended for `duration`, and both sides have heard of its resume.
    void suspend(Duration duration) {
        FanHelperService& service = *machine.helper.service;
        machine.helper.queue.sync([&] { service.releaseBeforeSuspend(); });
        EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
        machine.helper.time.suspend(duration);
        machine.helper.queue.sync([&] { service.resumeAfterSuspend(); });
        machine.mainLoop.syncAhead([&] { fan().resumeAfterSuspend(); });
        machine.settle();
    }

    FanMachine machine;
};

TEST_F(FanSuspend, GivesAManualBoostTheTimeThatIsLeft) {
    switchOn(50, CoolingMode::manual);
    fan().setManualFloor(40);
    machine.advance(10s);
    static_cast<void>(machine.takeRequests());
    suspend(5min);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 40"});
    EXPECT_EQ(fan().boostRemainingText(), "4:50");
    EXPECT_EQ(machine.heldFloor(), 40);
    machine.advance(2s);
    EXPECT_TRUE(fan().isBoosted());
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    machine.advance(288s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_FALSE(fan().fansEnabled());
    EXPECT_EQ(machine.postedTitles(), Texts{"Fan boost finished"});
}

TEST_F(FanSuspend, GetsItsFloorWhenTheHelperHearsOfTheResumeLater) {
    switchOn(50, CoolingMode::manual);
    FanHelperService& service = *machine.helper.service;
    machine.helper.queue.sync([&] { service.releaseBeforeSuspend(); });
    machine.helper.time.suspend(5min);
    machine.mainLoop.syncAhead([&] { fan().resumeAfterSuspend(); });
    machine.advance(100ms);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    machine.helper.queue.sync([&] { service.resumeAfterSuspend(); });
    machine.advance(3s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_TRUE(fan().isBoosted());
}

TEST_F(FanSuspend, EndsABoostWhoseTimeIsOver) {
    switchOn(50, CoolingMode::manual);
    suspend(1h);
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
    EXPECT_FALSE(fan().fansEnabled());
    EXPECT_FALSE(fan().isBoosted());
    EXPECT_EQ(fan().boostExpiresAt(), std::nullopt);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_EQ(machine.postedTitles(), Texts{"Fan boost finished"});
}

TEST_F(FanSuspend, EndsABoostWhoseTimeIsUpAtTheMomentOfTheResume) {
    switchOn(50, CoolingMode::manual);
    suspend(590s);
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanSuspend, AsksOnceForTheFloorOfAutomaticMode) {
    switchOn(62, CoolingMode::automatic);
    suspend(1h);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 25"});
    EXPECT_EQ(machine.heldFloor(), 25);
    machine.advance(1min);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_TRUE(fan().isBoosted());
}

TEST_F(FanSuspend, AsksForTheAutomationsFloor) {
    machine.openAt(62);
    fan().requestCooling(Kind::balanced, "lid");
    machine.advance(5s);
    static_cast<void>(machine.takeRequests());
    suspend(1h);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 25"});
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanSuspend, AsksForNothingWhenNothingIsWanted) {
    machine.openAt(62);
    suspend(1h);
    machine.advance(20s);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanSuspend, ShowsTheTimeOfTheResumeWithTheNextPoll) {
    switchOn(50, CoolingMode::manual);
    suspend(5min);
    machine.advance(1s);
    EXPECT_EQ(fan().boostRemainingText(), "4:49");
}

}  // namespace
}  // namespace corvane
