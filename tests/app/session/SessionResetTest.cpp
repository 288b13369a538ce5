#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/session/SessionMachine.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class SessionReset : public SessionTest {
protected:
    SessionReset() : SessionTest(75) {}

    void beginEverything() {
        machine.advance(20s);
        manager().apply({Kind::system, Kind::display, Kind::network}, in(2h));
        manager().lid().setEnabled(true);
        manager().fan().setFansEnabled(true);
        machine.automate();
        machine.advance(5s);
        ASSERT_TRUE(machine.helper.mac.isAnyFanForced());
        ASSERT_TRUE(machine.helper.sleepSetting.isSleepDisabled());
        ASSERT_EQ(machine.power.held().size(), 6U);
        static_cast<void>(machine.takeRequests());
    }

    void expectEverythingReleased() {
        EXPECT_TRUE(machine.isIdle());
        EXPECT_FALSE(manager().lid().enabled());
        EXPECT_FALSE(manager().fan().fansEnabled());
        EXPECT_FALSE(manager().triggers().automationEnabled());
        EXPECT_FALSE(manager().anythingActive());
        EXPECT_TRUE(machine.power.held().empty());
        EXPECT_EQ(manager().fan().triggerProfile(), std::nullopt);
        machine.advance(5s);
        EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
        EXPECT_EQ(machine.heldFloor(), 0);
        EXPECT_FALSE(machine.helper.sleepSetting.isSleepDisabled());
        static_cast<void>(machine.takeRequests());
        machine.advance(10min);
        EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
        EXPECT_EQ(machine.takeRequests(), Texts{}) << "nothing is asked for any more";
    }
};

TEST_F(SessionReset, StopsEverythingInAutomaticMode) {
    beginEverything();
    manager().resetAll();
    expectEverythingReleased();
}

TEST_F(SessionReset, StopsEverythingInManualMode) {
    manager().fan().setCoolingMode(CoolingMode::manual);
    beginEverything();
    manager().resetAll();
    expectEverythingReleased();
}

TEST_F(SessionReset, GoesThroughSessionLidFansAndAutomationInThisOrder) {
    beginEverything();
    Texts order;
    QObject::connect(&manager(), &SleepManager::activeKindsChanged, [&] { order.emplace_back("kinds"); });
    QObject::connect(&manager(), &SleepManager::expiresAtChanged, [&] { order.emplace_back("end"); });
    QObject::connect(&manager().lid(), &LidManager::enabledChanged, [&] { order.emplace_back("lid"); });
    QObject::connect(&manager().fan(), &FanController::fansEnabledChanged,
                     [&] { order.emplace_back("fans"); });
    QObject::connect(&manager().triggers(), &TriggerManager::automationEnabledChanged,
                     [&] { order.emplace_back("automation"); });
    manager().resetAll();
    EXPECT_THAT(order, ElementsAre("kinds", "end", "lid", "fans", "automation"));
}

TEST_F(SessionReset, StoresThatTheAutomationIsOffAndKeepsItsRules) {
    beginEverything();
    manager().resetAll();
    EXPECT_EQ(machine.defaults.get<bool>(TriggerManager::enabledSetting), false);
    EXPECT_EQ(manager().triggers().apps().size(), 1);
}

TEST_F(SessionReset, DoesNotAskTheHelperForALidThatIsNotLocked) {
    static_cast<void>(machine.takeRequests());
    manager().resetAll();
    machine.settle();
    EXPECT_THAT(machine.takeRequests(), Not(Contains("lid off")));
}

TEST_F(SessionReset, TwiceIsLikeOnce) {
    beginEverything();
    manager().resetAll();
    manager().resetAll();
    expectEverythingReleased();
}

TEST_F(SessionReset, LeavesTheDrivesAlone) {
    manager().drives().add({"/Volumes/Backup", "Backup"});
    manager().drives().setEnabled(true);
    manager().resetAll();
    EXPECT_TRUE(manager().drives().active());
}

TEST_F(SessionReset, StopsTheRestWithoutAHelper) {
    machine.manager.reset();
    machine.startWithoutHelper();
    manager().apply({Kind::system}, in(1h));
    manager().lid().setEnabled(true);
    machine.automate();
    manager().resetAll();
    EXPECT_TRUE(machine.isIdle());
    EXPECT_FALSE(manager().anythingActive());
    EXPECT_TRUE(machine.power.held().empty());
}

}  // namespace
}  // namespace corvane
