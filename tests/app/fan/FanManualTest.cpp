#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "app/fan/FanSettings.h"
#include "tests/app/fan/FanMachine.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// A cool machine in manual mode.
class FanManual : public testing::Test {
protected:
    FanManual() {
        machine.defaults.set(FanSettings::coolingMode, "manual");
        machine.openAt(50);
    }

    FanController& fan() { return *machine.fan; }
    void switchOn() {
        fan().setFansEnabled(true);
        machine.advance(2s);
        ASSERT_EQ(machine.takeRequests(), Texts{"floor 100"});
    }

    FanMachine machine;
};

TEST_F(FanManual, HoldsAllThatTheFansCanDoAtFirst) {
    switchOn();
    EXPECT_EQ(fan().manualPercent(), 100);
    EXPECT_EQ(fan().targetPercent(), 100);
    EXPECT_EQ(machine.heldFloor(), 100);
    EXPECT_EQ(machine.helper.mac.fanTarget(0), 5000);
    EXPECT_FALSE(fan().autoEngaged());
}

TEST_F(FanManual, HoldsTheFloorOfTheSlider) {
    switchOn();
    fan().setManualFloor(40);
    machine.advance(15s);
    EXPECT_EQ(fan().manualPercent(), 40);
    EXPECT_EQ(fan().targetPercent(), 40);
    EXPECT_TRUE(fan().isBoosted());
    EXPECT_EQ(machine.heldFloor(), 40);
    EXPECT_EQ(machine.helper.mac.fanTarget(0), 2600);
    EXPECT_NEAR(machine.helper.mac.fanSpeed(0), 2600, 1);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 40"});
}

TEST_F(FanManual, TellsThatItBoostsBeforeTheHelperAnswers) {
    fan().setFansEnabled(true);
    EXPECT_TRUE(fan().isBoosted());
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanManual, SwitchesOffForZeroInsteadOfAskingForIt) {
    switchOn();
    fan().setManualFloor(40);
    machine.advance(2s);
    for (const double percent : {0.0, -0.0, -20.0, -std::numeric_limits<double>::infinity()}) {
        fan().setFansEnabled(true);
        machine.advance(2s);
        ASSERT_TRUE(machine.helper.mac.isAnyFanForced());
        static_cast<void>(machine.takeRequests());
        fan().setManualFloor(percent);
        machine.advance(2s);
        EXPECT_FALSE(fan().fansEnabled()) << percent;
        EXPECT_EQ(machine.takeRequests(), Texts{"stop"}) << percent;
        EXPECT_FALSE(machine.helper.mac.isAnyFanForced()) << percent;
        EXPECT_EQ(fan().manualPercent(), 40) << "shown when the fans are switched on again";
    }
}

TEST_F(FanManual, IgnoresWhatIsNotANumber) {
    switchOn();
    fan().setManualFloor(std::nan(""));
    machine.advance(2s);
    EXPECT_EQ(fan().manualPercent(), 100);
    EXPECT_TRUE(fan().fansEnabled());
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(machine.heldFloor(), 100);
}

TEST_F(FanManual, TakesMoreThanAllForAll) {
    switchOn();
    for (const double percent : {100.5, std::numeric_limits<double>::infinity()}) {
        fan().setManualFloor(percent);
        machine.advance(1s);
        EXPECT_EQ(fan().manualPercent(), 100);
        EXPECT_EQ(machine.takeRequests(), Texts{"floor 100"});
    }
}

TEST_F(FanManual, SendsTheSmallestFloor) {
    switchOn();
    fan().setManualFloor(0.25);
    machine.advance(2s);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 0.25"});
    EXPECT_EQ(machine.heldFloor(), 0.25);
    EXPECT_EQ(machine.helper.mac.fanTarget(0), 1010);
}

TEST_F(FanManual, DoesNotHearTheSliderInAutomaticMode) {
    fan().setCoolingMode(CoolingMode::automatic);
    fan().setFansEnabled(true);
    for (const double percent : {40.0, 0.0}) {
        fan().setManualFloor(percent);
        machine.advance(2s);
        EXPECT_EQ(fan().manualPercent(), 100);
        EXPECT_TRUE(fan().fansEnabled());
        EXPECT_EQ(machine.takeRequests(), Texts{});
    }
}

TEST_F(FanManual, DoesNotHearTheSliderWhileSwitchedOff) {
    for (const double percent : {40.0, 0.0}) {
        fan().setManualFloor(percent);
        machine.advance(2s);
        EXPECT_EQ(fan().manualPercent(), 100);
        EXPECT_EQ(machine.takeRequests(), Texts{});
    }
}

TEST(FanWithoutHelper, HearsNeitherSwitchNorSliderNorAutomation) {
    FanMachine machine;
    machine.installer.setInstalled(false);
    machine.openAt(62);
    FanController& fan = *machine.fan;
    fan.reconcileToOffOnLaunch();  // opens a connection all the same, so that temperatures are known
    machine.advance(20s);
    ASSERT_EQ(fan.cpuTempSmoothed(), 62);
    static_cast<void>(machine.takeRequests());

    fan.setFansEnabled(true);
    EXPECT_FALSE(fan.fansEnabled());
    EXPECT_FALSE(fan.autoActive());
    fan.setManualFloor(40);
    EXPECT_EQ(fan.manualPercent(), 100);
    fan.setAuto(true);
    fan.requestCooling(CoolingProfile::Kind::max, "apps");
    EXPECT_FALSE(fan.applyBoost(60, false));
    machine.advance(5s);
    EXPECT_FALSE(fan.autoEngaged());
    EXPECT_EQ(fan.autoFloor(), 0);
    EXPECT_EQ(fan.boostExpiresAt(), std::nullopt);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanManual, ShowsARefusalInBothLanguages) {
    machine.report([] { return StatusRecord(); });
    machine.requests.refusesFloors = true;
    fan().setFansEnabled(true);
    EXPECT_TRUE(fan().isBoosted());
    machine.settle();
    EXPECT_FALSE(fan().isBoosted());
    EXPECT_EQ(fan().statusMessage(), "Couldn't set fans.");
    machine.locale.prefer({"de"});
    fan().setManualFloor(50);
    machine.settle();
    EXPECT_FALSE(fan().isBoosted());
    EXPECT_EQ(fan().statusMessage(), "Lüfter konnte nicht gesetzt werden.");
    EXPECT_EQ(machine.log.count("Corvane: the fan helper refused a floor: "), 2U);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanManual, ShowsAfterARefusalWhatTheHelperReallyHolds) {
    switchOn();
    machine.requests.refusesFloors = true;
    fan().setManualFloor(50);
    machine.settle();
    EXPECT_TRUE(fan().isBoosted()) << "the status that follows a refusal at once";
    EXPECT_EQ(machine.heldFloor(), 100);
    EXPECT_EQ(fan().statusMessage(), "Couldn't set fans.");
}

TEST_F(FanManual, ForgetsARefusalWithTheNextFloorOrRelease) {
    machine.requests.refusesFloors = true;
    fan().setFansEnabled(true);
    machine.settle();
    fan().setFansEnabled(false);
    machine.settle();
    EXPECT_EQ(fan().statusMessage(), "");
    fan().setFansEnabled(true);
    machine.settle();
    ASSERT_EQ(fan().statusMessage(), "Couldn't set fans.");
    machine.requests.refusesFloors = false;
    fan().setManualFloor(50);
    machine.settle();
    EXPECT_EQ(fan().statusMessage(), "");
    EXPECT_TRUE(fan().isBoosted());
}

TEST_F(FanManual, LooksAtTheFansAtOnceAfterEveryRequest) {
    machine.advance(100ms);
    fan().setFansEnabled(true);
    machine.settle();
    EXPECT_EQ(fan().effectivePercent(), 100);
    EXPECT_EQ(fan().fans().at(0).targetRPM, 5000);
    fan().setFansEnabled(false);
    machine.settle();
    EXPECT_EQ(fan().effectivePercent(), 0);
}

TEST_F(FanManual, CanBeReleasedDirectly) {
    switchOn();
    EXPECT_TRUE(fan().resetBoost());
    EXPECT_FALSE(fan().isBoosted());
    EXPECT_EQ(fan().targetPercent(), 0);
    EXPECT_EQ(fan().boostExpiresAt(), std::nullopt);
    EXPECT_FALSE(fan().spinningUp());
    machine.settle();
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanManual, LooksAtTheFansAndForgetsItsComplaintAlsoWhenAReleaseIsRefused) {
    machine.requests.refusesFloors = true;
    fan().setFansEnabled(true);
    machine.settle();
    ASSERT_EQ(fan().statusMessage(), "Couldn't set fans.");
    machine.requests.refusesStops = true;
    machine.helper.setFloor(40);
    fan().resetBoost();
    machine.settle();
    EXPECT_EQ(fan().statusMessage(), "");
    EXPECT_EQ(fan().effectivePercent(), 40);
}

TEST_F(FanManual, SaysThatNobodyWasReachedWithoutAConnection) {
    switchOn();
    machine.host.failCallsWith("gone");
    machine.advance(1s);
    EXPECT_FALSE(fan().resetBoost());
    EXPECT_EQ(fan().targetPercent(), 0);
    EXPECT_FALSE(fan().isBoosted());
    EXPECT_EQ(machine.host.connectionCount(), 0U) << "a release opens no connection";
}

TEST_F(FanManual, OpensAConnectionForAFloor) {
    machine.host.failCallsWith("gone");
    machine.advance(1s);
    ASSERT_EQ(machine.host.connectionCount(), 0U);
    machine.host.failCallsWith("");
    fan().setFansEnabled(true);
    machine.settle();
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    EXPECT_EQ(machine.heldFloor(), 100);
}

}  // namespace
}  // namespace corvane
