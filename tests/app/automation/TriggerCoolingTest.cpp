#include <gtest/gtest.h>

#include "tests/app/automation/TriggerMachine.h"
#include "tests/app/fan/FanMachine.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;

/// The automation beside the real fan controller and helper, at 74 °C: silent asks for 19 %, max for 100 %.
class TriggerCooling : public testing::Test {
protected:
    TriggerCooling() {
        fans.openAt(74);
        machine.openOn();
        machine.manager->setCoolingSink(&*fans.fan);
        machine.manager->addApp(rule("Quiet", Kind::silent));
        machine.manager->addApp(rule("Render", Kind::max));
        machine.manager->addApp(rule("Upload"));
    }

    void start(const char* name) {
        machine.applications.start(identifierOf(rule(name)));
        fans.settle();
    }
    void quit(const char* name) {
        machine.applications.quit(identifierOf(rule(name)));
        fans.settle();
    }

    FanMachine fans;
    TriggerMachine machine;
};

TEST_F(TriggerCooling, ForcesTheFansWhileAnApplicationRunsAndGivesThemBack) {
    start("Quiet");
    EXPECT_EQ(fans.heldFloor(), 19);
    EXPECT_TRUE(fans.helper.mac.isAnyFanForced());
    start("Render");
    EXPECT_EQ(fans.heldFloor(), 100);
    quit("Render");
    EXPECT_EQ(fans.heldFloor(), 19);
    quit("Quiet");
    EXPECT_FALSE(fans.helper.mac.isAnyFanForced());
    EXPECT_EQ(fans.fan->triggerProfile(), std::nullopt);
}

TEST_F(TriggerCooling, IsNotAskedForByRulesThatOnlyKeepAwake) {
    machine.manager->setKeepAwakeOnAC(true);
    start("Upload");
    EXPECT_EQ(machine.reason(), "on AC power, Upload");
    EXPECT_EQ(fans.fan->triggerProfile(), std::nullopt);
    EXPECT_FALSE(fans.helper.mac.isAnyFanForced());
}

TEST_F(TriggerCooling, EndsWithTheMasterSwitch) {
    start("Render");
    machine.manager->setAutomationEnabled(false);
    fans.settle();
    EXPECT_EQ(fans.fan->triggerProfile(), std::nullopt);
    EXPECT_FALSE(fans.helper.mac.isAnyFanForced());
}

TEST_F(TriggerCooling, EndsOnALowBattery) {
    start("Render");
    machine.runOnBattery(12);
    machine.time.advance(5s);
    fans.settle();
    EXPECT_EQ(fans.fan->triggerProfile(), std::nullopt);
    EXPECT_FALSE(fans.helper.mac.isAnyFanForced());
}

TEST_F(TriggerCooling, FollowsAChangeOfTheRule) {
    start("Upload");
    machine.manager->setCooling(Kind::silent, rule("Upload"));
    EXPECT_EQ(fans.fan->triggerProfile(), Kind::silent);
    machine.manager->setCooling(std::nullopt, rule("Upload"));
    EXPECT_EQ(fans.fan->triggerProfile(), std::nullopt);
}

TEST_F(TriggerCooling, LeavesRequestsOfOthersAlone) {
    fans.fan->requestCooling(Kind::balanced, "lid");
    start("Render");
    EXPECT_EQ(fans.fan->triggerProfile(), Kind::max);
    quit("Render");
    EXPECT_EQ(fans.fan->triggerProfile(), Kind::balanced);
    machine.manager->setAutomationEnabled(false);
    EXPECT_EQ(fans.fan->triggerProfile(), Kind::balanced);
}

TEST_F(TriggerCooling, DoesNotAskAgainForWhatIsHeld) {
    start("Quiet");
    static_cast<void>(fans.takeRequests());
    machine.time.advance(1h);
    fans.settle();
    EXPECT_EQ(fans.takeRequests(), std::vector<std::string>());
}

TEST_F(TriggerCooling, IsOnlySkippedWithoutAFanController) {
    fans.fan.reset();
    EXPECT_EQ(machine.manager->coolingSink(), nullptr);
    start("Render");
    EXPECT_EQ(machine.held(), awake);
    EXPECT_EQ(machine.manager->coolingProfileActive(), Kind::max);
}

TEST_F(TriggerCooling, BeginsWithTheNextLookAfterTheFanControllerIsKnown) {
    machine.manager->setCoolingSink(nullptr);
    start("Quiet");
    EXPECT_EQ(fans.fan->triggerProfile(), std::nullopt);
    machine.manager->setCoolingSink(&*fans.fan);
    EXPECT_EQ(fans.fan->triggerProfile(), std::nullopt);
    machine.manager->evaluate();
    EXPECT_EQ(fans.fan->triggerProfile(), Kind::silent);
}

}  // namespace
}  // namespace corvane
