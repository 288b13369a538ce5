#include <gtest/gtest.h>

#include "tests/app/automation/TriggerMachine.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;

constexpr Display ownDisplay{.isBuiltIn = true};
constexpr Display monitor{.isBuiltIn = false};

class TriggerRules : public testing::Test {
protected:
    TriggerManager& manager() { return *machine.manager; }
    void expectAwakeFor(const std::string& reason) {
        EXPECT_EQ(machine.held(), awake);
        EXPECT_TRUE(manager().active());
        EXPECT_EQ(machine.reason(), reason);
    }
    void expectStoodDown() {
        EXPECT_EQ(machine.held(), nothing);
        EXPECT_FALSE(manager().active());
        EXPECT_EQ(machine.reason(), "");
        EXPECT_EQ(manager().coolingProfileActive(), std::nullopt);
    }

    TriggerMachine machine;
};

TEST_F(TriggerRules, HoldNothingWhileTheMasterSwitchIsOff) {
    machine.open();
    manager().setKeepAwakeOnAC(true);
    manager().setKeepAwakeOnExternalDisplay(true);
    manager().addApp(rule("Render", Kind::max));
    machine.displays.set(std::vector{ownDisplay, monitor});
    machine.applications.start(identifierOf(rule("Render")));
    machine.time.advance(1min);
    expectStoodDown();
    EXPECT_EQ(machine.power.taken(), 0U);
    manager().setAutomationEnabled(true);
    expectAwakeFor("on AC power, external display, Render");
    manager().setAutomationEnabled(false);
    expectStoodDown();
}

TEST_F(TriggerRules, HoldNothingWhenThereAreNone) {
    machine.openOn();
    machine.time.advance(1min);
    expectStoodDown();
}

TEST_F(TriggerRules, TakeTheSystemAndThenTheDisplayAndKeepBoth) {
    machine.openOn();
    manager().setKeepAwakeOnAC(true);
    machine.time.advance(1h);
    expectAwakeFor("on AC power");
    EXPECT_EQ(machine.power.held().begin()->second.type, PowerAssertions::preventUserIdleSystemSleep);
    EXPECT_EQ(machine.power.taken(), 2U);
    EXPECT_EQ(manager().assertions().heldKinds(),
              (SleepAssertions::Kinds{SleepAssertions::Kind::system, SleepAssertions::Kind::display}));
    manager().setKeepAwakeOnAC(false);
    expectStoodDown();
    EXPECT_EQ(machine.power.released(), 2U);
}

TEST_F(TriggerRules, TakeAgainWhatTheSystemRefused) {
    machine.power.refuse(PowerAssertions::preventUserIdleSystemSleep);
    machine.openOn();
    manager().setKeepAwakeOnAC(true);
    EXPECT_EQ(machine.held(), std::multiset<std::string>{PowerAssertions::preventUserIdleDisplaySleep});
    EXPECT_TRUE(manager().active());
    machine.power.refuse("");
    machine.time.advance(5s);
    EXPECT_EQ(machine.held(), awake);
}

TEST_F(TriggerRules, LeaveAssertionsOfOthersAlone) {
    SleepAssertions users(machine.power);
    users.start(SleepAssertions::Kind::system);
    machine.openOn();
    manager().setKeepAwakeOnAC(true);
    users.stopAll();
    EXPECT_EQ(machine.held(), awake);
    users.start(SleepAssertions::Kind::system);
    manager().setAutomationEnabled(false);
    EXPECT_EQ(machine.held(), std::multiset<std::string>{PowerAssertions::preventUserIdleSystemSleep});
}

TEST_F(TriggerRules, OfACPowerHoldOnACAlone) {
    machine.runOnBattery(50);
    machine.openOn();
    manager().setKeepAwakeOnAC(true);
    expectStoodDown();
    machine.runOnAC(50);
    machine.time.advance(4999ms);
    expectStoodDown();
    machine.time.advance(1ms);
    expectAwakeFor("on AC power");
    machine.runOnBattery(50);
    machine.time.advance(5s);
    expectStoodDown();
}

TEST_F(TriggerRules, OfACPowerHoldWithoutABattery) {
    machine.openOn();
    manager().setKeepAwakeOnAC(true);
    expectAwakeFor("on AC power");
}

TEST_F(TriggerRules, OfTheExternalDisplayFollowTheDisplaysAtOnce) {
    machine.openOn();
    manager().setKeepAwakeOnExternalDisplay(true);
    expectStoodDown();
    machine.displays.set(std::vector{ownDisplay, monitor});
    expectAwakeFor("external display");
    machine.displays.set(std::vector{monitor});
    expectAwakeFor("external display");
    machine.displays.set(std::vector{ownDisplay, ownDisplay});
    expectStoodDown();
    machine.displays.set(std::vector{monitor, ownDisplay});
    expectAwakeFor("external display");
    machine.displays.set(std::vector<Display>());
    expectStoodDown();
}

TEST_F(TriggerRules, OfTheExternalDisplayDoNotHoldWhenTheSystemDoesNotTell) {
    machine.displays.set(std::vector{monitor});
    machine.openOn();
    manager().setKeepAwakeOnExternalDisplay(true);
    expectAwakeFor("external display");
    machine.displays.set(std::nullopt);
    expectStoodDown();
}

TEST_F(TriggerRules, FindDisplaysAndApplicationsOfWhichNobodyTold) {
    machine.openOn();
    manager().setKeepAwakeOnExternalDisplay(true);
    manager().addApp(rule("Render"));
    machine.displays.setSilently(std::vector{monitor});
    machine.applications.setSilently({identifierOf(rule("Render"))});
    expectStoodDown();
    machine.time.advance(5s);
    expectAwakeFor("external display, Render");
}

TEST_F(TriggerRules, OfApplicationsFollowTheirStartAndEndAtOnce) {
    machine.openOn();
    manager().addApp(rule("Render"));
    expectStoodDown();
    machine.applications.start(identifierOf(rule("Render")));
    expectAwakeFor("Render");
    machine.applications.quit(identifierOf(rule("Render")));
    expectStoodDown();
}

TEST_F(TriggerRules, OfApplicationsMatchIdentifiersToTheLetter) {
    machine.openOn();
    manager().addApp(rule("Render"));
    machine.applications.set({"org.example.render", "org.example.Render2", "Render", ""});
    expectStoodDown();
}

TEST_F(TriggerRules, OfApplicationsNameTheFirstAndCountTheOthers) {
    machine.openOn();
    manager().addApp(rule("A", Kind::silent));
    manager().addApp(rule("B"));
    manager().addApp(rule("C", Kind::max));
    manager().addApp(rule("D", Kind::balanced));
    machine.applications.set({identifierOf(rule("C")), identifierOf(rule("B")), identifierOf(rule("A"))});
    expectAwakeFor("A +2");
    EXPECT_EQ(manager().coolingProfileActive(), Kind::max);
    machine.applications.quit(identifierOf(rule("A")));
    expectAwakeFor("B +1");
    machine.applications.quit(identifierOf(rule("C")));
    expectAwakeFor("B");
    EXPECT_EQ(manager().coolingProfileActive(), std::nullopt);
}

TEST_F(TriggerRules, AskForTheStrongestProfileInWhateverOrder) {
    machine.openOn();
    manager().addApp(rule("A", Kind::balanced));
    manager().addApp(rule("B", Kind::silent));
    machine.applications.set({identifierOf(rule("A")), identifierOf(rule("B"))});
    EXPECT_EQ(manager().coolingProfileActive(), Kind::balanced);
    EXPECT_EQ(manager().property("coolingProfileActive"), "balanced");
    machine.applications.quit(identifierOf(rule("A")));
    EXPECT_EQ(manager().coolingProfileActive(), Kind::silent);
    machine.applications.quit(identifierOf(rule("B")));
    EXPECT_EQ(manager().property("coolingProfileActive"), "");
}

TEST_F(TriggerRules, JoinTheirReasonsInAFixedOrder) {
    machine.applications.start(identifierOf(rule("A")));
    machine.displays.set(std::vector{ownDisplay, monitor});
    machine.openOn();
    manager().addApp(rule("A"));
    manager().setKeepAwakeOnAC(true);
    expectAwakeFor("on AC power, A");
    EXPECT_EQ(manager().coolingProfileActive(), std::nullopt);
    manager().setKeepAwakeOnExternalDisplay(true);
    expectAwakeFor("on AC power, external display, A");
}

TEST_F(TriggerRules, SpeakGermanToo) {
    machine.locale.prefer({"de-AT"});
    machine.displays.set(std::vector{ownDisplay, monitor});
    machine.openOn();
    manager().setKeepAwakeOnAC(true);
    manager().setKeepAwakeOnExternalDisplay(true);
    expectAwakeFor("am Netzteil, externer Bildschirm");
    machine.defaults.set(Lang::setting, std::string("en"));
    machine.time.advance(5s);
    expectAwakeFor("on AC power, external display");
}

TEST_F(TriggerRules, TakeNamesAsTheyAre) {
    TriggerApp odd = rule("Odd");
    odd.name = QString::fromUtf8("100 %1, Ä");
    machine.openOn();
    manager().addApp(odd);
    manager().addApp(rule("B"));
    machine.applications.set({identifierOf(odd), identifierOf(rule("B"))});
    expectAwakeFor("100 %1, Ä +1");
}

TEST_F(TriggerRules, StandDownAtTwelvePercentOnBatteryAndReturnAboveOrOnAC) {
    machine.openOn();
    manager().addApp(rule("Render", Kind::max));
    machine.applications.start(identifierOf(rule("Render")));
    machine.runOnBattery(13);
    machine.time.advance(5s);
    expectAwakeFor("Render");
    EXPECT_EQ(manager().coolingProfileActive(), Kind::max);
    machine.runOnBattery(12);
    machine.time.advance(5s);
    expectStoodDown();
    machine.runOnBattery(0);
    machine.time.advance(5s);
    expectStoodDown();
    machine.runOnAC(12);
    machine.time.advance(5s);
    expectAwakeFor("Render");
    machine.runOnBattery(12);
    machine.time.advance(5s);
    machine.runOnBattery(13);
    machine.time.advance(5s);
    expectAwakeFor("Render");
}

TEST_F(TriggerRules, HoldOnALowBatteryWhenTheUserWantsThat) {
    machine.runOnBattery(12);
    machine.defaults.set("lowBatteryAutoStop", false);
    machine.openOn();
    EXPECT_FALSE(manager().lowBatteryAutoStop());
    manager().addApp(rule("Render"));
    machine.applications.start(identifierOf(rule("Render")));
    expectAwakeFor("Render");
    machine.defaults.set("lowBatteryAutoStop", true);
    machine.time.advance(5s);
    expectStoodDown();
    EXPECT_TRUE(manager().lowBatteryAutoStop());
}

TEST_F(TriggerRules, CountAWronglyTypedWishAboutLowBatteriesAsAbsent) {
    machine.runOnBattery(12);
    machine.defaults.set("lowBatteryAutoStop", std::int64_t{0});
    machine.openOn();
    manager().addApp(rule("Render"));
    machine.applications.start(identifierOf(rule("Render")));
    expectStoodDown();
}

TEST_F(TriggerRules, HoldWhenTheChargeIsUnknown) {
    machine.runOnBattery(std::nullopt);
    machine.openOn();
    manager().addApp(rule("Render"));
    machine.applications.start(identifierOf(rule("Render")));
    expectAwakeFor("Render");
}

TEST_F(TriggerRules, AreLookedAtNoMoreAfterTheEnd) {
    machine.openOn();
    manager().setKeepAwakeOnExternalDisplay(true);
    machine.manager.reset();
    machine.displays.set(std::vector{monitor});
    machine.applications.start("org.example.Any");
    machine.time.advance(1min);
    EXPECT_EQ(machine.power.taken(), 0U);
}

}  // namespace
}  // namespace corvane
