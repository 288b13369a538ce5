#include <gtest/gtest.h>

#include "tests/app/fan/FanMachine.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;
using Texts = std::vector<std::string>;

/// 74 °C: silent asks for 19 %, balanced for 61.9 %, max for 100 %.
class FanRequests : public testing::Test {
protected:
    FanRequests() { machine.openAt(74); }

    FanController& fan() { return *machine.fan; }
    void ask(std::optional<Kind> kind, const std::string& source = "apps") {
        fan().requestCooling(kind, source);
        machine.settle();
    }
    void switchOn(CoolingMode mode) {
        fan().setCoolingMode(mode);
        fan().setFansEnabled(true);
        machine.advance(2s);
        static_cast<void>(machine.takeRequests());
    }
    bool isForced() { return machine.helper.mac.isAnyFanForced(); }

    FanMachine machine;
    /// 25 + 12 × 40 / 13, the balanced floor, as text.
    const std::string balancedFloor =
        fmt::format("floor {}", CoolingProfile::floorPercent(74, Kind::balanced));
};

TEST_F(FanRequests, CoolWhileTheSwitchIsOff) {
    ask(Kind::silent);
    EXPECT_EQ(fan().triggerProfile(), Kind::silent);
    EXPECT_FALSE(fan().fansEnabled());
    EXPECT_TRUE(fan().autoEngaged());
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 19"});
    machine.advance(1h);
    EXPECT_EQ(machine.heldFloor(), 19);
    EXPECT_EQ(machine.helper.mac.fanTarget(0), 1760);
    EXPECT_EQ(fan().boostExpiresAt(), std::nullopt);
}

TEST_F(FanRequests, CountByTheirStrengthHoweverManyAsk) {
    ask(Kind::balanced, "lid");
    EXPECT_EQ(fan().triggerProfile(), Kind::balanced);
    ask(Kind::max, "apps");
    EXPECT_EQ(fan().triggerProfile(), Kind::max);
    EXPECT_EQ(machine.takeRequests(), (Texts{balancedFloor, "floor 100"}));
    ask(std::nullopt, "apps");
    EXPECT_EQ(fan().triggerProfile(), Kind::balanced);
    EXPECT_EQ(machine.takeRequests(), Texts{balancedFloor});
    ask(std::nullopt, "lid");
    EXPECT_EQ(fan().triggerProfile(), std::nullopt);
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
    EXPECT_FALSE(isForced());
}

TEST_F(FanRequests, OfTheWeakerChangeNothing) {
    ask(Kind::balanced, "apps");
    static_cast<void>(machine.takeRequests());
    ask(Kind::silent, "lid");
    ask(Kind::balanced, "lid");
    ask(std::nullopt, "lid");
    EXPECT_EQ(fan().triggerProfile(), Kind::balanced);
    EXPECT_EQ(machine.takeRequests(), Texts{});
}

TEST_F(FanRequests, OfTheSameKindKeepEachOtherAlive) {
    ask(Kind::silent, "apps");
    ask(Kind::silent, "lid");
    ask(std::nullopt, "apps");
    EXPECT_EQ(fan().triggerProfile(), Kind::silent);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 19"});
    EXPECT_TRUE(isForced());
}

TEST_F(FanRequests, ReplaceTheEarlierOneOfTheSameRequester) {
    ask(Kind::max);
    ask(Kind::silent);
    EXPECT_EQ(fan().triggerProfile(), Kind::silent);
    ask(std::nullopt);
    EXPECT_EQ(fan().triggerProfile(), std::nullopt);
    EXPECT_EQ(machine.takeRequests(), (Texts{"floor 100", "floor 19", "stop"}));
}

TEST_F(FanRequests, ThatWereNeverMadeCanBeWithdrawn) {
    ask(std::nullopt);
    EXPECT_EQ(machine.takeRequests(), Texts{});
}

TEST_F(FanRequests, AreNotSentTwice) {
    ask(Kind::silent);
    fan().setTriggerCooling(Kind::silent);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 19"});
}

TEST_F(FanRequests, AskForPermissionToNotify) {
    machine.center.setAuthorization(NotificationAuthorization::notDetermined);
    ask(Kind::silent);
    EXPECT_EQ(machine.center.authorizationRequests(), 1);
    ask(Kind::silent);
    ask(std::nullopt);
    EXPECT_EQ(machine.center.authorizationRequests(), 1);
}

TEST_F(FanRequests, WithdrawnWithTheSwitchOffForgetTheirFloor) {
    ask(Kind::silent);
    ask(std::nullopt);
    EXPECT_FALSE(fan().autoEngaged());
    EXPECT_EQ(fan().autoFloor(), 0);
    EXPECT_EQ(fan().targetPercent(), 0);
    EXPECT_FALSE(fan().isBoosted());
    machine.advance(10s);
    EXPECT_FALSE(isForced());
}

TEST_F(FanRequests, ThatHeldNothingReleaseNothingWhenWithdrawn) {
    machine.helper.mac.holdSensorsAt(50);
    machine.advance(16s);
    ask(Kind::balanced);
    ASSERT_FALSE(fan().autoEngaged());
    ask(std::nullopt);
    EXPECT_EQ(machine.takeRequests(), Texts{});
}

TEST_F(FanRequests, OutliveTheSwitch) {
    switchOn(CoolingMode::automatic);
    ask(Kind::silent);
    static_cast<void>(machine.takeRequests());
    fan().setFansEnabled(false);
    EXPECT_TRUE(fan().autoEngaged()) << "at once, not with the next status";
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), (Texts{"stop", "floor 19"}));
    EXPECT_EQ(machine.heldFloor(), 19);
    ask(std::nullopt);
    EXPECT_FALSE(isForced());
}

TEST_F(FanRequests, OverrideEvenAStrongerProfileOfTheUserInAutomaticMode) {
    fan().setCoolingProfile(Kind::max);
    switchOn(CoolingMode::automatic);
    ASSERT_EQ(machine.heldFloor(), 100);
    ask(Kind::silent);
    EXPECT_EQ(machine.heldFloor(), 19);
    ask(std::nullopt);
    EXPECT_EQ(machine.takeRequests(), (Texts{"floor 19", "floor 100"}));
    EXPECT_EQ(machine.heldFloor(), 100);
    EXPECT_TRUE(fan().autoEngaged());
}

TEST_F(FanRequests, AreSentEvenWhenTheyChangeNothingInAutomaticMode) {
    fan().setCoolingProfile(Kind::silent);
    switchOn(CoolingMode::automatic);
    ask(Kind::silent);
    ask(std::nullopt);
    EXPECT_EQ(machine.takeRequests(), (Texts{"floor 19", "floor 19"}));
}

TEST_F(FanRequests, GiveWayToALargerFloorOfTheSliderInManualMode) {
    switchOn(CoolingMode::manual);
    fan().setManualFloor(50);
    machine.advance(1s);
    static_cast<void>(machine.takeRequests());
    ask(Kind::silent);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 50"});
    EXPECT_EQ(fan().autoFloor(), 50);
    EXPECT_EQ(machine.heldFloor(), 50);
}

TEST_F(FanRequests, BeatASmallerFloorOfTheSliderInManualMode) {
    switchOn(CoolingMode::manual);
    fan().setManualFloor(10);
    machine.advance(1s);
    static_cast<void>(machine.takeRequests());
    ask(Kind::silent);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 19"});
    EXPECT_EQ(fan().manualPercent(), 10);
    EXPECT_EQ(machine.heldFloor(), 19);
    ask(std::nullopt);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 10"});
    EXPECT_EQ(machine.heldFloor(), 10);
}

TEST_F(FanRequests, BecomeTheSlidersFloorWhenTheUserChoosesALength) {
    switchOn(CoolingMode::manual);
    fan().setManualFloor(10);
    ask(Kind::silent);
    EXPECT_TRUE(fan().applyBoost(1800, false));
    EXPECT_EQ(fan().manualPercent(), 19);
    EXPECT_EQ(fan().boostRemainingText(), "30:00");
}

TEST_F(FanRequests, EndTheBoostsTimerAndGiveBackAFullOne) {
    switchOn(CoolingMode::manual);
    fan().setManualFloor(30);
    machine.advance(300s);
    ask(Kind::silent);
    EXPECT_EQ(fan().boostExpiresAt(), std::nullopt);
    machine.advance(1200s);
    EXPECT_TRUE(fan().fansEnabled());
    static_cast<void>(machine.takeRequests());
    ask(std::nullopt);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 30"});
    EXPECT_EQ(fan().boostRemainingText(), "10:00");
    EXPECT_FALSE(fan().autoEngaged());
    EXPECT_EQ(fan().autoFloor(), 0);
    EXPECT_EQ(machine.heldFloor(), 30);
    machine.advance(600s);
    EXPECT_FALSE(isForced());
}

TEST_F(FanRequests, LetTheSliderMoveBeneathThem) {
    switchOn(CoolingMode::manual);
    ask(Kind::silent);
    static_cast<void>(machine.takeRequests());
    fan().setManualFloor(10);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 19"});
    EXPECT_EQ(fan().manualPercent(), 10);
    EXPECT_EQ(fan().boostExpiresAt(), std::nullopt);
    fan().setManualFloor(19.5);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 19.5"}) << "by force, however small the change";
    fan().setManualFloor(0);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), (Texts{"stop", "floor 19"}));
    EXPECT_FALSE(fan().fansEnabled());
    EXPECT_EQ(machine.heldFloor(), 19);
}

TEST_F(FanRequests, TakeTheSlidersFloorOnlyWhileTheSwitchIsOn) {
    fan().setCoolingMode(CoolingMode::manual);
    ask(Kind::silent);
    EXPECT_EQ(fan().autoFloor(), 19) << "the slider says 100";
    EXPECT_EQ(machine.heldFloor(), 19);
}

TEST_F(FanRequests, TakeNoNoticeOfTheSliderInAutomaticMode) {
    switchOn(CoolingMode::automatic);
    ask(Kind::silent);
    EXPECT_EQ(machine.heldFloor(), 19);
}

TEST_F(FanRequests, LetGoOfACoolMachineAndReturnWithTheHeat) {
    ask(Kind::balanced);
    machine.helper.mac.holdSensorsAt(50);
    machine.advance(30s);
    EXPECT_EQ(machine.takeRequests(), (Texts{balancedFloor, "stop"}));
    EXPECT_FALSE(isForced());
    EXPECT_EQ(fan().triggerProfile(), Kind::balanced);
    machine.helper.mac.holdSensorsAt(62);
    machine.advance(16s);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 25"});
}

TEST_F(FanRequests, FollowTheTemperatureWhileTheSwitchIsOff) {
    ask(Kind::silent);
    machine.helper.mac.holdSensorsAt(72);
    machine.advance(16s);
    EXPECT_EQ(machine.takeRequests(), (Texts{"floor 19", "floor 15"}));
    EXPECT_EQ(machine.heldFloor(), 15);
}

}  // namespace
}  // namespace corvane
