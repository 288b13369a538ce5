#include <gtest/gtest.h>

#include "app/fan/FanSettings.h"
#include "tests/app/fan/FanMachine.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

struct FanMode : testing::Test {
    FanController& fan() { return *machine.fan; }

    void openAt(float celsius, const std::string& mode) {
        machine.defaults.set(FanSettings::coolingMode, mode);
        machine.openAt(celsius);
        writesBefore_ = machine.defaults.writes().size();
    }
    void switchOn() {
        fan().setFansEnabled(true);
        machine.advance(2s);
        static_cast<void>(machine.takeRequests());
    }
    /// The texts written as mode since the machine was opened.
    [[nodiscard]] Texts writtenModes() const {
        Texts texts;
        for (std::size_t i = writesBefore_; i < machine.defaults.writes().size(); ++i) {
            const auto& [key, value] = machine.defaults.writes()[i];
            EXPECT_EQ(key, "fan.coolingMode");
            texts.push_back(std::get<std::string>(value.value()));
        }
        return texts;
    }

    FanMachine machine;

private:
    std::size_t writesBefore_ = 0;
};

TEST_F(FanMode, WritesWhatChangesAndNothingElse) {
    openAt(50, "auto");
    fan().setCoolingMode(CoolingMode::automatic);
    EXPECT_EQ(writtenModes(), Texts{});
    fan().setCoolingMode(CoolingMode::manual);
    fan().setCoolingMode(CoolingMode::manual);
    fan().setCoolingMode(CoolingMode::automatic);
    EXPECT_EQ(writtenModes(), (Texts{"manual", "auto"}));
}

TEST_F(FanMode, AsksNothingOfTheHelperWhileSwitchedOff) {
    openAt(62, "auto");
    fan().setCoolingMode(CoolingMode::manual);
    fan().setCoolingMode(CoolingMode::automatic);
    machine.advance(20s);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_FALSE(fan().autoActive());
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanMode, TouchesNothingWhenTheModeIsTheSame) {
    openAt(62, "manual");
    switchOn();
    machine.advance(60s);
    fan().setCoolingMode(CoolingMode::manual);
    machine.advance(1s);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(fan().boostRemainingText(), "8:57");
}

TEST_F(FanMode, GoesToTheFloorOfTheProfileFromManual) {
    openAt(62, "manual");
    switchOn();
    fan().setCoolingMode(CoolingMode::automatic);
    machine.advance(2s);
    EXPECT_EQ(machine.takeRequests(), (Texts{"stop", "floor 25"}));
    EXPECT_TRUE(fan().autoActive());
    EXPECT_TRUE(fan().autoEngaged());
    EXPECT_EQ(fan().autoFloor(), 25);
    EXPECT_EQ(machine.heldFloor(), 25);
    EXPECT_EQ(machine.helper.mac.fanTarget(0), 2000);
    EXPECT_EQ(fan().boostRemainingText(), std::nullopt);
}

TEST_F(FanMode, LeavesACoolMachineToItsFirmwareInAutomatic) {
    openAt(50, "manual");
    switchOn();
    fan().setCoolingMode(CoolingMode::automatic);
    machine.advance(2s);
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
    EXPECT_TRUE(fan().autoActive());
    EXPECT_FALSE(fan().autoEngaged());
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

/// A boost without a time is one, too: an automation's, which is above the user's.
TEST_F(FanMode, EndsABoostWithoutATimeOnTheWayToAutomatic) {
    openAt(50, "manual");
    switchOn();
    fan().requestCooling(CoolingProfile::Kind::silent, "apps");
    machine.settle();
    ASSERT_EQ(machine.takeRequests(), Texts{"floor 100"});
    ASSERT_EQ(fan().boostExpiresAt(), std::nullopt);
    ASSERT_TRUE(machine.helper.mac.isAnyFanForced());
    fan().setCoolingMode(CoolingMode::automatic);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanMode, EndsABoostThatHasItsTimeButNoRecordKnowsOfOnTheWayToAutomatic) {
    openAt(50, "manual");
    fan().setBoostDuration(60);
    switchOn();
    machine.killHelper();
    machine.advance(1s);
    ASSERT_FALSE(fan().isBoosted());
    ASSERT_NE(fan().boostExpiresAt(), std::nullopt);
    fan().setCoolingMode(CoolingMode::automatic);
    EXPECT_EQ(fan().boostExpiresAt(), std::nullopt);
    machine.advance(120s);
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
    EXPECT_TRUE(fan().fansEnabled());
    EXPECT_TRUE(fan().autoActive());
}

TEST_F(FanMode, GoesToTheSlidersFloorFromAutomatic) {
    openAt(62, "auto");
    switchOn();
    ASSERT_EQ(machine.heldFloor(), 25);
    fan().setCoolingMode(CoolingMode::manual);
    EXPECT_FALSE(fan().autoActive());
    EXPECT_FALSE(fan().autoEngaged());
    EXPECT_EQ(fan().autoFloor(), 0);
    EXPECT_EQ(fan().targetPercent(), 100);
    EXPECT_EQ(fan().boostRemainingText(), "10:00");
    machine.advance(2s);
    EXPECT_EQ(machine.takeRequests(), (Texts{"stop", "floor 100"}));
    EXPECT_EQ(machine.heldFloor(), 100);
    EXPECT_TRUE(fan().isBoosted());
}

TEST_F(FanMode, ReturnsToTheSlidersLastFloor) {
    openAt(62, "manual");
    switchOn();
    fan().setManualFloor(35);
    machine.advance(1s);
    fan().setCoolingMode(CoolingMode::automatic);
    machine.advance(10s);
    fan().setCoolingMode(CoolingMode::manual);
    machine.advance(1s);
    EXPECT_EQ(machine.heldFloor(), 35);
}

TEST_F(FanMode, AsksForPermissionToNotifyWhenAutomaticBegins) {
    openAt(50, "manual");
    switchOn();
    machine.center.setAuthorization(NotificationAuthorization::notDetermined);
    fan().setCoolingMode(CoolingMode::automatic);
    machine.settle();
    EXPECT_EQ(machine.center.authorizationRequests(), 1);
}

TEST_F(FanMode, SwitchedOffInManualReleasesAndEndsTheTimer) {
    openAt(50, "manual");
    switchOn();
    fan().setFansEnabled(false);
    machine.advance(1s);
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
    EXPECT_EQ(fan().boostExpiresAt(), std::nullopt);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanMode, SwitchedOffInAutomaticReleasesAndDisarms) {
    openAt(62, "auto");
    switchOn();
    ASSERT_TRUE(machine.helper.mac.isAnyFanForced());
    fan().setFansEnabled(false);
    machine.advance(20s);
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
    EXPECT_FALSE(fan().autoActive());
    EXPECT_FALSE(fan().autoEngaged());
    EXPECT_EQ(fan().autoFloor(), 0);
    EXPECT_EQ(fan().targetPercent(), 0);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

}  // namespace
}  // namespace corvane
