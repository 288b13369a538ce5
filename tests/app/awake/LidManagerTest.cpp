#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/awake/LidMachine.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;
using Texts = std::vector<std::string>;

class LidManagerTest : public testing::Test {
protected:
    LidManagerTest() { machine.openLid(); }

    LidManager& lid() { return *machine.lid; }
    FanController& fan() { return *machine.fan; }
    bool isLockedByHelper() { return *machine.helper.status().get<bool>(StatusKey::lidStayAwake); }

    LidMachine machine;
};

TEST_F(LidManagerTest, IsOffAtFirstAndHoldsNothing) {
    machine.advance(1h);
    EXPECT_FALSE(lid().enabled());
    EXPECT_EQ(machine.lastAutoOff(), "");
    EXPECT_EQ(machine.power.taken(), 0U);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(fan().triggerProfile(), std::nullopt);
    EXPECT_EQ(machine.center.foregroundRequests(), 0);
}

TEST_F(LidManagerTest, DisablesSleepThroughTheHelperHoldsTheSystemAwakeAndAsksForCooling) {
    machine.switchOn();
    EXPECT_TRUE(lid().enabled());
    EXPECT_TRUE(machine.isSleepDisabled());
    EXPECT_TRUE(fan().intendedLidLock());
    ASSERT_EQ(machine.power.held().size(), 1U);
    EXPECT_EQ(machine.power.held().begin()->second.type, PowerAssertions::preventUserIdleSystemSleep);
    EXPECT_EQ(lid().assertions().heldKinds(), SleepAssertions::Kinds{SleepAssertions::Kind::system});
    EXPECT_EQ(fan().triggerProfile(), Kind::balanced);
}

TEST_F(LidManagerTest, AsksForThePermissionToPostWhenItIsSwitchedOn) {
    machine.center.setAuthorization(NotificationAuthorization::notDetermined);
    machine.switchOn();
    EXPECT_GE(machine.center.authorizationRequests(), 1);
}

TEST_F(LidManagerTest, CoolsThroughTheHelperWhenTheLidTrapsHeat) {
    machine.helper.mac.holdSensorsAt(75);
    machine.switchOn();
    machine.advance(30s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    machine.switchOff();
    machine.advance(5s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(LidManagerTest, LetsGoOfEverythingWhenItIsSwitchedOff) {
    machine.switchOn();
    machine.switchOff();
    EXPECT_FALSE(lid().enabled());
    EXPECT_FALSE(machine.isSleepDisabled());
    EXPECT_FALSE(fan().intendedLidLock());
    EXPECT_TRUE(machine.power.held().empty());
    EXPECT_EQ(fan().triggerProfile(), std::nullopt);
    EXPECT_EQ(machine.lastAutoOff(), "");
    EXPECT_EQ(machine.takeLidRequests(), (Texts{"lid on", "lid off"}));
    machine.advance(1h);
    EXPECT_EQ(machine.takeLidRequests(), Texts{}) << "the watchdog has ended";
    EXPECT_EQ(machine.postedTitles(), Texts{});
}

TEST_F(LidManagerTest, SetToWhatItIsDoesNothing) {
    lid().setEnabled(false);
    machine.settle();
    EXPECT_EQ(machine.takeLidRequests(), Texts{});
    machine.switchOn();
    machine.advance(15s);
    machine.switchOn();
    EXPECT_EQ(machine.power.taken(), 1U);
    machine.advance(5s);
    EXPECT_EQ(machine.takeLidRequests(), (Texts{"lid on", "lid on"})) << "on, and the first watchdog";
}

TEST_F(LidManagerTest, AsksTheHelperAgainEveryTwentySeconds) {
    machine.switchOn();
    EXPECT_EQ(machine.takeLidRequests(), Texts{"lid on"});
    machine.advance(20s - 1ms);
    EXPECT_EQ(machine.takeLidRequests(), Texts{});
    machine.advance(1ms);
    EXPECT_EQ(machine.takeLidRequests(), Texts{"lid on"});
    machine.advance(10min);
    EXPECT_EQ(machine.takeLidRequests().size(), 30U);
    EXPECT_EQ(machine.power.taken(), 1U);
}

TEST_F(LidManagerTest, BeginsTheTwentySecondsAnewEachTimeItIsSwitchedOn) {
    machine.switchOn();
    machine.advance(10s);
    machine.switchOff();
    machine.advance(5s);
    machine.switchOn();
    static_cast<void>(machine.takeLidRequests());
    machine.advance(20s - 1ms);
    EXPECT_EQ(machine.takeLidRequests(), Texts{});
    machine.advance(1ms);
    EXPECT_EQ(machine.takeLidRequests(), Texts{"lid on"});
}

TEST_F(LidManagerTest, KeepsTheLidLockedThroughARestartOfTheHelper) {
    machine.switchOn();
    machine.advance(5s);
    machine.killHelper();
    machine.advance(14s);
    EXPECT_FALSE(isLockedByHelper()) << "the next helper knows nothing of it";
    machine.advance(1s);
    EXPECT_TRUE(isLockedByHelper());
    EXPECT_TRUE(machine.isSleepDisabled());
    machine.advance(1h);
    EXPECT_TRUE(isLockedByHelper());
    EXPECT_EQ(machine.log.count("self-heal"), 0U);
}

TEST_F(LidManagerTest, OpensAConnectionToAHelperThatWasLost) {
    machine.switchOn();
    machine.host.failCallsWith("gone");
    machine.advance(2s);
    ASSERT_EQ(machine.host.connectionCount(), 0U);
    machine.host.failCallsWith("");
    machine.advance(20s);
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    EXPECT_TRUE(machine.isSleepDisabled());
}

TEST_F(LidManagerTest, IsSwitchedOnAndOffThroughAConnectionThatWasLost) {
    const auto loseConnection = [this] {
        machine.host.failCallsWith("gone");
        machine.advance(1s);
        ASSERT_EQ(machine.host.connectionCount(), 0U);
        machine.host.failCallsWith("");
    };
    loseConnection();
    machine.switchOn();
    EXPECT_TRUE(machine.isSleepDisabled());
    loseConnection();
    ASSERT_TRUE(machine.isSleepDisabled());
    machine.switchOff();
    EXPECT_FALSE(machine.isSleepDisabled());
}

TEST_F(LidManagerTest, WithdrawsOnlyItsOwnRequestForCooling) {
    fan().requestCooling(Kind::silent, "apps");
    machine.switchOn();
    EXPECT_EQ(fan().triggerProfile(), Kind::balanced);
    machine.switchOff();
    EXPECT_EQ(fan().triggerProfile(), Kind::silent);
    fan().requestCooling(Kind::max, "apps");
    machine.switchOn();
    machine.switchOff();
    EXPECT_EQ(fan().triggerProfile(), Kind::max);
}

TEST_F(LidManagerTest, LeavesTheAssertionsOfOthersAlone) {
    SleepAssertions others(machine.power);
    others.start(SleepAssertions::Kind::system);
    machine.switchOn();
    EXPECT_EQ(machine.power.held().size(), 2U);
    machine.switchOff();
    EXPECT_EQ(machine.power.held().size(), 1U);
    EXPECT_TRUE(others.holds(SleepAssertions::Kind::system));
}

TEST_F(LidManagerTest, IsOnEvenWhenTheSystemRefusesTheAssertion) {
    machine.power.refuse(PowerAssertions::preventUserIdleSystemSleep);
    machine.switchOn();
    EXPECT_TRUE(lid().enabled());
    EXPECT_TRUE(machine.isSleepDisabled());
    EXPECT_TRUE(machine.power.held().empty());
}

TEST_F(LidManagerTest, AnnouncesEachChangeOnce) {
    int announced = 0;
    QObject::connect(&lid(), &LidManager::enabledChanged, [&] { ++announced; });
    machine.switchOn();
    machine.switchOn();
    EXPECT_EQ(announced, 1);
    EXPECT_TRUE(lid().property("enabled").toBool());
    machine.switchOff();
    machine.switchOff();
    EXPECT_EQ(announced, 2);
    EXPECT_TRUE(lid().setProperty("enabled", true));
    EXPECT_TRUE(lid().enabled());
}

TEST_F(LidManagerTest, DoesNothingAtAllWithoutAFanController) {
    machine.fan.reset();
    machine.switchOn();
    machine.advance(1min);
    EXPECT_TRUE(lid().enabled());
    EXPECT_TRUE(machine.power.held().empty());
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(machine.center.foregroundRequests(), 0);
    machine.switchOff();
    EXPECT_EQ(machine.takeRequests(), Texts{});
}

TEST_F(LidManagerTest, WhoseFanControllerHasGoneReleasesNothing) {
    machine.switchOn();
    machine.fan.reset();
    static_cast<void>(machine.takeRequests());
    machine.powerSources.set(onBattery(5));
    machine.advance(1min);
    EXPECT_TRUE(lid().enabled());
    machine.switchOff();
    EXPECT_EQ(machine.power.held().size(), 1U);
    EXPECT_EQ(machine.takeRequests(), Texts{});
}

TEST_F(LidManagerTest, DoesNothingMoreWhenItIsGone) {
    machine.switchOn();
    static_cast<void>(machine.takeRequests());
    machine.lid.reset();
    machine.thermal.set(ThermalState::critical);
    machine.powerSources.set(onBattery(1));
    machine.advance(1h);
    EXPECT_EQ(machine.takeLidRequests(), Texts{});
    EXPECT_EQ(machine.postedUnder("🌡️ Closed-lid stopped"), Texts{});
    EXPECT_EQ(machine.power.held().size(), 1U) << "left to the system, which drops it with the process";
}

/// No helper is installed.
class LidWithoutHelper : public LidManagerTest {
protected:
    LidWithoutHelper() {
        machine.lid.reset();
        machine.installer.setInstalled(false);
        machine.fan.reset();
        machine.open();
        machine.openLid();
        static_cast<void>(machine.takeRequests());
    }
};

TEST_F(LidWithoutHelper, HoldsTheSystemAwakeAndAsksForCoolingAllTheSame) {
    machine.switchOn();
    machine.advance(1min);
    EXPECT_EQ(machine.power.held().size(), 1U);
    EXPECT_EQ(fan().triggerProfile(), Kind::balanced);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(machine.host.connectionCount(), 0U);
    EXPECT_FALSE(fan().intendedLidLock());
    machine.switchOff();
    EXPECT_TRUE(machine.power.held().empty());
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST_F(LidWithoutHelper, AsksTheHelperThatIsInstalledMeanwhileAtTheNextTick) {
    machine.switchOn();
    machine.advance(5s);
    fan().installHelper();
    machine.installer.finish(InstallResult::success());
    machine.advance(14s);
    EXPECT_FALSE(machine.isSleepDisabled());
    machine.advance(1s);
    EXPECT_TRUE(machine.isSleepDisabled());
}

}  // namespace
}  // namespace corvane
