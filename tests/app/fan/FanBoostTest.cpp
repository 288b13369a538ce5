#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "app/fan/FanSettings.h"
#include "tests/app/fan/FanMachine.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using Kind = CoolingProfile::Kind;

/// A cool machine in manual mode with the switch off; the floor is 100 unless the slider is touched.
class FanBoost : public testing::Test {
protected:
    FanBoost() { openAt(50); }

    void openAt(float celsius) {
        machine.defaults.set(FanSettings::coolingMode, "manual");
        machine.openAt(celsius);
    }
    FanController& fan() { return *machine.fan; }
    bool isForced() { return machine.helper.mac.isAnyFanForced(); }

    FanMachine machine;
};

TEST_F(FanBoost, TakesTenMinutesUnlessToldOtherwise) {
    fan().setFansEnabled(true);
    EXPECT_EQ(fan().boostRemainingText(), "10:00");
    machine.advance(599s);
    EXPECT_EQ(fan().boostRemainingText(), "0:01");
    EXPECT_EQ(machine.heldFloor(), 100);
    machine.advance(1s);
    EXPECT_EQ(fan().boostRemainingText(), std::nullopt);
    EXPECT_EQ(machine.heldFloor(), 0);
    EXPECT_EQ(machine.takeRequests(), (Texts{"floor 100", "stop"}));
}

TEST_F(FanBoost, CountsDownInMinutesAndTwoDigitsOfSeconds) {
    fan().setBoostDuration(545);
    fan().setFansEnabled(true);
    EXPECT_EQ(fan().boostRemainingText(), "9:05");
    machine.advance(485s);
    EXPECT_EQ(fan().boostRemainingText(), "1:00");
    machine.advance(55s);
    EXPECT_EQ(fan().boostRemainingText(), "0:05");
}

TEST_F(FanBoost, ShowsWholeSecondsOnly) {
    fan().setFansEnabled(true);
    machine.advance(500ms);
    fan().setManualFloor(80);
    machine.advance(500ms);
    EXPECT_EQ(fan().boostRemainingText(), "9:59") << "599.5 s are left";
}

TEST_F(FanBoost, HasNoCountdownWhileNothingIsForced) {
    EXPECT_EQ(fan().boostRemainingText(), std::nullopt);
    EXPECT_EQ(fan().boostExpiresAt(), std::nullopt);
}

TEST_F(FanBoost, TakesAnHourAtMost) {
    fan().setBoostDuration(7200);
    fan().setFansEnabled(true);
    EXPECT_EQ(fan().boostRemainingText(), "60:00");
    machine.advance(3599s);
    EXPECT_TRUE(isForced());
    machine.advance(1s);
    EXPECT_FALSE(isForced());
    EXPECT_FALSE(fan().isBoosted());
}

TEST_F(FanBoost, TakesExactlyAnHourWhenThatIsWhatIsChosen) {
    fan().setBoostDuration(3600);
    fan().setFansEnabled(true);
    EXPECT_EQ(fan().boostRemainingText(), "60:00");
}

TEST_F(FanBoost, TakesAnHourWhenTheLengthHasNoEnd) {
    fan().setBoostDuration(std::numeric_limits<double>::infinity());
    fan().setFansEnabled(true);
    EXPECT_EQ(fan().boostRemainingText(), "60:00");
}

TEST_F(FanBoost, KeepsItsLengthWhenTheNewOneIsNoTime) {
    for (const double seconds : {0.0, -60.0, std::nan("")}) {
        fan().setBoostDuration(seconds);
        EXPECT_EQ(fan().boostDuration(), 600);
    }
}

TEST_F(FanBoost, BeginsAgainInFullWithEveryChangeOfTheSlider) {
    fan().setFansEnabled(true);
    machine.advance(300s);
    fan().setManualFloor(60);
    EXPECT_EQ(fan().boostRemainingText(), "10:00");
    machine.advance(599s);
    EXPECT_EQ(machine.heldFloor(), 60);
    machine.advance(1s);
    EXPECT_EQ(machine.heldFloor(), 0);
    EXPECT_FALSE(isForced());
}

TEST_F(FanBoost, TakesANewLengthWhileItRuns) {
    fan().setFansEnabled(true);
    machine.advance(100s);
    EXPECT_TRUE(fan().applyBoost(1800, false));
    EXPECT_EQ(fan().boostRemainingText(), "30:00");
    machine.advance(1799s);
    EXPECT_EQ(machine.heldFloor(), 100);
    machine.advance(1s);
    EXPECT_EQ(machine.heldFloor(), 0);
}

TEST_F(FanBoost, KeepsItsTimeWhenItIsAskedForAgainWithoutALength) {
    fan().setFansEnabled(true);
    machine.advance(100s);
    fan().setBoostDuration(3000);
    EXPECT_TRUE(fan().applyBoost(std::nullopt, false));
    EXPECT_EQ(fan().boostRemainingText(), "8:20");
    machine.advance(499s);
    EXPECT_EQ(machine.heldFloor(), 100);
    machine.advance(1s);
    EXPECT_EQ(machine.heldFloor(), 0);
}

TEST_F(FanBoost, TakesTheChosenLengthWhenItIsNotHeldAnyMore) {
    fan().setFansEnabled(true);
    machine.advance(100s);
    machine.killHelper();
    machine.advance(1s);
    ASSERT_FALSE(fan().isBoosted());
    fan().setBoostDuration(120);
    EXPECT_TRUE(fan().applyBoost(std::nullopt, false));
    EXPECT_EQ(fan().boostRemainingText(), "2:00");
    machine.settle();
    EXPECT_EQ(machine.heldFloor(), 100);
}

TEST_F(FanBoost, EndsItsCountdownWhenNothingIsAskedForAnyMore) {
    fan().setFansEnabled(true);
    machine.advance(10s);
    fan().setFansEnabled(false);
    EXPECT_EQ(fan().boostRemainingText(), std::nullopt);
    machine.advance(700s);
    EXPECT_TRUE(machine.postedTitles().empty());
    EXPECT_TRUE(fan().applyBoost(600, false)) << "0 % is a request, too";
    EXPECT_EQ(fan().boostExpiresAt(), std::nullopt);
    EXPECT_FALSE(fan().isBoosted());
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), (Texts{"floor 100", "stop", "floor 0"}));
}

TEST_F(FanBoost, ThatEndsSwitchesOffHandsTheFansBackAndSaysSo) {
    fan().setBoostDuration(60);
    fan().setFansEnabled(true);
    machine.advance(60s);
    EXPECT_FALSE(fan().fansEnabled());
    EXPECT_FALSE(fan().isBoosted());
    EXPECT_EQ(fan().targetPercent(), 0);
    EXPECT_FALSE(fan().spinningUp());
    EXPECT_EQ(machine.heldFloor(), 0);
    EXPECT_FALSE(isForced());
    machine.advance(60s);
    EXPECT_EQ(machine.helper.mac.fanSpeed(0), 0) << "the firmware lets the fan of a cool machine stand";
    ASSERT_EQ(machine.center.posted().size(), 1U);
    EXPECT_EQ(machine.center.posted()[0].title, "Fan boost finished");
    EXPECT_EQ(machine.center.posted()[0].body, "The boost timer ended — fans are back on automatic.");
}

TEST_F(FanBoost, ThatEndsSaysSoInGerman) {
    machine.locale.prefer({"de-AT"});
    fan().setBoostDuration(60);
    fan().setFansEnabled(true);
    machine.advance(60s);
    ASSERT_EQ(machine.center.posted().size(), 1U);
    EXPECT_EQ(machine.center.posted()[0].title, "Lüfter-Boost beendet");
    EXPECT_EQ(machine.center.posted()[0].body,
              "Der Boost-Timer ist abgelaufen — die Lüfter laufen wieder automatisch.");
}

TEST_F(FanBoost, ThatEndsWithoutAConnectionLeavesTheReleaseToTheWatchdog) {
    fan().setBoostDuration(60);
    fan().setFansEnabled(true);
    machine.advance(59s);
    machine.host.failCallsWith("no reply");
    machine.advance(1s);
    machine.advance(8s);
    EXPECT_FALSE(fan().fansEnabled());
    EXPECT_FALSE(fan().isBoosted());
    EXPECT_FALSE(isForced());
    EXPECT_EQ(machine.center.posted().size(), 1U);
}

/// The automation asks at 52.5 °C, for 1.25 %; then the user switches on and holds 100 % with a timer, which
/// the automation leaves alone because it would ask for the same floor.
class FanBoostOverAutomation : public FanBoost {
protected:
    FanBoostOverAutomation() {
        openAt(52.5);
        fan().setTriggerCooling(Kind::balanced);
        fan().setFansEnabled(true);
        machine.advance(599s);
        EXPECT_EQ(machine.takeRequests(), (Texts{"floor 1.25", "floor 100"}));
    }
};

TEST_F(FanBoostOverAutomation, GivesWayToTheAutomationsFloorWhenItEnds) {
    ASSERT_EQ(fan().boostRemainingText(), "0:01");
    machine.advance(1s);
    EXPECT_EQ(machine.takeRequests(), (Texts{"stop", "floor 1.25"}));
    EXPECT_FALSE(fan().fansEnabled());
    EXPECT_TRUE(fan().autoEngaged());
    EXPECT_EQ(fan().targetPercent(), 1.25);
    EXPECT_EQ(fan().boostRemainingText(), std::nullopt);
    machine.advance(10s);
    EXPECT_EQ(machine.heldFloor(), 1.25);
    EXPECT_EQ(machine.helper.mac.fanTarget(0), 1050);
    ASSERT_EQ(machine.center.posted().size(), 1U);
    EXPECT_EQ(machine.center.posted()[0].title, "Fan boost finished");
    EXPECT_EQ(machine.center.posted()[0].body, "The boost timer ended — automation keeps cooling.");
}

TEST_F(FanBoostOverAutomation, SaysInGermanThatTheAutomationCoolsOn) {
    machine.locale.prefer({"de"});
    machine.advance(1s);
    ASSERT_EQ(machine.center.posted().size(), 1U);
    EXPECT_EQ(machine.center.posted()[0].body,
              "Der Boost-Timer ist abgelaufen — die Automatik kühlt weiter.");
}

TEST_F(FanBoost, ShowsASpinUpOfFiveSecondsFromWhereItBegins) {
    EXPECT_EQ(fan().spinUpRemaining(), std::nullopt);
    fan().setFansEnabled(true);
    EXPECT_TRUE(fan().spinningUp());
    EXPECT_EQ(fan().spinUpRemaining(), 5);
    machine.advance(2s);
    EXPECT_EQ(fan().spinUpRemaining(), 3);
    machine.advance(5s);
    EXPECT_TRUE(fan().spinningUp()) << "a fan needs 10.6 s to 85 % of 5000 RPM";
    EXPECT_EQ(fan().spinUpRemaining(), 0);
    machine.advance(5s);
    EXPECT_FALSE(fan().spinningUp());
    EXPECT_EQ(fan().spinUpRemaining(), std::nullopt);
}

TEST_F(FanBoost, DoesNotShowTheSpinUpAgainForAnotherFloor) {
    fan().setFansEnabled(true);
    machine.advance(3s);
    fan().setManualFloor(80);
    EXPECT_EQ(fan().spinUpRemaining(), 2);
    machine.advance(15s);
    ASSERT_FALSE(fan().spinningUp());
    fan().setManualFloor(100);
    EXPECT_FALSE(fan().spinningUp());
}

TEST_F(FanBoost, EndsTheSpinUpWithTheBoost) {
    fan().setFansEnabled(true);
    machine.advance(2s);
    fan().setFansEnabled(false);
    EXPECT_FALSE(fan().spinningUp());
    EXPECT_EQ(fan().spinUpUntil(), std::nullopt);
    EXPECT_EQ(fan().spinUpRemaining(), std::nullopt);
}

TEST_F(FanBoost, AsksForPermissionToNotifyWheneverItsTimerBegins) {
    machine.center.setAuthorization(NotificationAuthorization::notDetermined);
    fan().setFansEnabled(true);
    machine.settle();
    EXPECT_EQ(machine.center.authorizationRequests(), 2) << "for the switch and for the timer";
    fan().setManualFloor(50);
    machine.settle();
    EXPECT_EQ(machine.center.authorizationRequests(), 3);
}

}  // namespace
}  // namespace corvane
