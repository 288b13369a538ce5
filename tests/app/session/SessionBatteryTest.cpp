#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/session/SessionMachine.h"

namespace corvane {
namespace {

class SessionBattery : public SessionTest {
protected:
    using Sources = SimulatedPowerSources::Descriptions;

    void begin() { manager().apply({Kind::system, Kind::display}, std::nullopt); }
    /// The battery is so, and is looked at.
    void see(const Sources& sources) {
        machine.powerSources.set(sources);
        machine.advance(30s);
    }
    bool isGoingOn() { return !manager().activeKinds().empty(); }

    /// A session that a low battery ended and that the user began again.
    void beginAgainAfterAStop() {
        begin();
        see(onBattery(15));
        ASSERT_FALSE(isGoingOn());
        begin();
    }
};

TEST_F(SessionBattery, EndsTheSessionWhenItIsLow) {
    manager().apply({Kind::system}, in(2h));
    machine.powerSources.set(onBattery(15));
    machine.advance(30s - 1ms);
    EXPECT_TRUE(isGoingOn());
    machine.advance(1ms);
    EXPECT_TRUE(machine.isIdle());
    EXPECT_TRUE(machine.power.held().empty());
    machine.advance(24h);
    EXPECT_EQ(machine.posted(batteryLow), 1U);
    EXPECT_EQ(machine.posted(finished), 0U) << "the timer went with the session";
}

TEST_F(SessionBattery, SaysSoInTheUsersLanguage) {
    begin();
    see(onBattery(15));
    see(onMains(50));
    machine.locale.prefer({"de"});
    begin();
    see(onBattery(15));
    ASSERT_EQ(machine.center.posted().size(), 2U);
    EXPECT_EQ(machine.center.posted()[0].title, "🪫 Battery low");
    EXPECT_EQ(machine.center.posted()[0].body,
              "Below 15% on battery — keep-awake was stopped so your Mac can sleep.");
    EXPECT_EQ(machine.center.posted()[1].title, "🪫 Akku niedrig");
    EXPECT_EQ(machine.center.posted()[1].body,
              "Unter 15 % auf Akku — Wach bleiben wurde beendet, damit dein Mac schlafen kann.");
}

TEST_F(SessionBattery, IsLookedAtEveryThirtySeconds) {
    begin();
    machine.advance(10min + 1ms);
    machine.powerSources.set(onBattery(15));
    machine.advance(30s - 2ms);
    EXPECT_TRUE(isGoingOn());
    machine.advance(1ms);
    EXPECT_FALSE(isGoingOn());
}

TEST_F(SessionBattery, EndsNoSessionUnlessItIsKnownToBeLow) {
    begin();
    for (const Sources& sources :
         {onBattery(16), onBattery(20), onBattery(21), onBattery(100), onBattery(std::nullopt), onMains(0),
          onMains(15), onMains(std::nullopt), Sources{}, Sources{std::nullopt}}) {
        see(sources);
        EXPECT_TRUE(isGoingOn());
    }
    EXPECT_EQ(machine.posted(batteryLow), 0U);
}

TEST_F(SessionBattery, EndsASessionAtAnyLowCharge) {
    for (const int percentage : {0, 1, 14, 15}) {
        begin();
        see(onBattery(percentage));
        EXPECT_FALSE(isGoingOn()) << percentage;
        see(onBattery(21));
    }
}

TEST_F(SessionBattery, EndsNothingTwiceInOneDischarge) {
    beginAgainAfterAStop();
    see(onBattery(14));
    EXPECT_TRUE(isGoingOn());
    machine.advance(3h);
    EXPECT_TRUE(isGoingOn());
    see(onBattery(1));
    EXPECT_TRUE(isGoingOn());
    EXPECT_EQ(machine.posted(batteryLow), 1U);
}

TEST_F(SessionBattery, EndsNoSessionAgainBeforeItIsWellAboveTheLimit) {
    for (const int percentage : {16, 18, 20}) {
        SCOPED_TRACE(percentage);
        beginAgainAfterAStop();
        see(onBattery(percentage));
        see(onBattery(15));
        EXPECT_TRUE(isGoingOn());
        see(onMains(50));
    }
}

TEST_F(SessionBattery, EndsASessionAgainAfterItWasCharged) {
    for (const Sources& charged : {onBattery(21), onBattery(100), onMains(10), onBattery(std::nullopt),
                                   onMains(std::nullopt), Sources{}}) {
        beginAgainAfterAStop();
        see(charged);
        EXPECT_TRUE(isGoingOn());
        see(onBattery(15));
        EXPECT_FALSE(isGoingOn());
        see(onMains(50));
    }
    EXPECT_EQ(machine.posted(batteryLow), 12U);
}

TEST_F(SessionBattery, DoesNothingWithoutASession) {
    see(onBattery(15));
    see(onBattery(5));
    EXPECT_EQ(machine.posted(batteryLow), 0U);
    begin();
    see(onBattery(5));
    EXPECT_FALSE(isGoingOn()) << "it has ended none in this discharge yet";
    EXPECT_EQ(machine.posted(batteryLow), 1U);
}

TEST_F(SessionBattery, EndsNoSessionOfAUserWhoDoesNotWantThat) {
    machine.defaults.set(LowBatteryAutoStop::setting, false);
    begin();
    see(onBattery(15));
    see(onBattery(0));
    machine.advance(3h);
    EXPECT_TRUE(isGoingOn());
    EXPECT_EQ(machine.posted(batteryLow), 0U);
    machine.defaults.set(LowBatteryAutoStop::setting, true);
    machine.advance(30s);
    EXPECT_FALSE(isGoingOn());
}

TEST_F(SessionBattery, EndsSessionsUnlessASwitchSaysOtherwise) {
    for (const DefaultsValue& value : {DefaultsValue(std::string("false")), DefaultsValue(std::int64_t{0})}) {
        machine.defaults.set(LowBatteryAutoStop::setting, value);
        begin();
        see(onBattery(15));
        EXPECT_FALSE(isGoingOn());
        see(onMains(50));
    }
}

TEST_F(SessionBattery, IsNotLookedAtWhileTheUserDoesNotWantThat) {
    beginAgainAfterAStop();
    machine.defaults.set(LowBatteryAutoStop::setting, false);
    see(onMains(100));
    machine.defaults.set(LowBatteryAutoStop::setting, true);
    see(onBattery(15));
    EXPECT_TRUE(isGoingOn()) << "that it was charged was not seen";
}

TEST_F(SessionBattery, LeavesTheAutomationAlone) {
    machine.automate();
    begin();
    see(onBattery(14));
    EXPECT_TRUE(machine.isIdle());
    EXPECT_TRUE(manager().triggers().active());
    EXPECT_EQ(machine.power.held().size(), 2U);
    EXPECT_TRUE(manager().triggers().automationEnabled());
}

TEST_F(SessionBattery, IsLookedAtAsTheComputerWakesUp) {
    begin();
    machine.helper.time.suspend(8h);
    machine.powerSources.set(onBattery(4));
    machine.settle();
    EXPECT_FALSE(isGoingOn());
    EXPECT_EQ(machine.posted(batteryLow), 1U);
}

TEST_F(SessionBattery, IsNotLookedAtAnyMoreWhenTheManagerIsGone) {
    begin();
    machine.manager.reset();
    see(onBattery(1));
    EXPECT_EQ(machine.posted(batteryLow), 0U);
    EXPECT_EQ(machine.power.held().size(), 2U) << "left to the system, which drops it with the process";
}

}  // namespace
}  // namespace corvane
