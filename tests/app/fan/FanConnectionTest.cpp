#include "tests/app/fan/ConnectedMachine.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;

constexpr const char* interrupted = "Helper unterbrochen — verbinde neu";
constexpr const char* lost = "Helper-Verbindung verloren";

TEST(FanConnection, LogsWhatBecomesOfItInEnglish) {
    ConnectedMachine machine;
    machine.locale.prefer({"de"});
    machine.killHelper();
    machine.settle();
    machine.host.failCallsWith("no time");
    machine.advance(1s);
    machine.host.failCallsWith("");
    machine.boost();
    machine.host.setInstalled(false);
    machine.advance(1s);
    EXPECT_THAT(machine.log.lines(),
                testing::ElementsAre("Corvane: the fan helper has gone, the next call starts it again",
                                     "Corvane: a call of the fan helper failed: no time",
                                     "Corvane: there is no fan helper to connect to"));
}

// Interruption

TEST(FanConnection, SaysThatTheHelperWasInterruptedAndKeepsTheConnection) {
    ConnectedMachine machine;
    machine.killHelper();
    machine.settle();
    EXPECT_EQ(machine.message(), interrupted);
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    EXPECT_FALSE(machine.host.isRunning());
}

TEST(FanConnection, StartsAnInterruptedHelperAgainWithTheNextPoll) {
    ConnectedMachine machine;
    machine.killHelper();
    machine.advance(999ms);
    EXPECT_EQ(machine.host.launchCount(), 1);
    machine.advance(1ms);
    EXPECT_EQ(machine.host.launchCount(), 2);
    machine.helper.mac.holdSensorsAt(55);
    machine.advance(1s);
    EXPECT_EQ(machine.fan->cpuTemp(), 55);
}

TEST(FanConnection, SaysItInGermanInEitherLanguage) {
    for (const char* language : {"en", "de"}) {
        ConnectedMachine machine;
        machine.locale.prefer({language});
        machine.killHelper();
        machine.settle();
        EXPECT_EQ(machine.message(), interrupted);
        machine.host.setInstalled(false);
        machine.advance(1s);
        EXPECT_EQ(machine.message(), lost);
    }
}

TEST(FanConnection, GoesOnSayingSoUntilARequestSucceeds) {
    ConnectedMachine machine;
    machine.killHelper();
    machine.advance(20s);
    EXPECT_EQ(machine.message(), interrupted);
    machine.boost();
    EXPECT_EQ(machine.message(), "");
}

TEST(FanConnection, IsInterruptedByEveryDeathOfTheHelper) {
    ConnectedMachine machine;
    for (int death = 1; death <= 5; ++death) {
        machine.killHelper();
        machine.advance(1s);
        EXPECT_EQ(machine.host.launchCount(), death + 1);
        EXPECT_EQ(machine.host.connectionCount(), 1U);
    }
}

// Invalidation

TEST(FanConnection, DropsAnInvalidConnectionAndSaysSo) {
    ConnectedMachine machine;
    machine.host.setInstalled(false);
    machine.advance(1s);
    EXPECT_EQ(machine.message(), lost);
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST(FanConnection, IsInvalidFromTheStartWhenTheServiceIsNotThere) {
    FanMachine machine;
    machine.host.setInstalled(false);
    machine.open();
    EXPECT_EQ(machine.fan->statusMessage().toStdString(), lost);
    EXPECT_EQ(machine.host.connectionCount(), 0U);
    EXPECT_TRUE(machine.fan->helperInstalled());
}

TEST(FanConnection, ShowsAMissingServiceToWhoeverConnectsWithoutAnInstalledHelper) {
    FanMachine machine;
    machine.installer.setInstalled(false);
    machine.host.setInstalled(false);
    machine.open();
    machine.fan->reconcileToOffOnLaunch();
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    machine.settle();
    EXPECT_EQ(machine.fan->statusMessage().toStdString(), lost);
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST(FanConnection, IsNotOpenedAgainByThePoll) {
    ConnectedMachine machine;
    machine.host.setInstalled(false);
    machine.advance(1s);
    machine.host.setInstalled(true);
    const BootTime lastSeen = machine.fan->now();
    machine.advance(60s);
    EXPECT_EQ(machine.host.connectionCount(), 0U);
    EXPECT_EQ(machine.message(), lost);
    EXPECT_EQ(machine.fan->now(), lastSeen + 60s);
}

TEST(FanConnection, IsNotOpenedAgainByAskingForTheStatusOrByRelease) {
    ConnectedMachine machine;
    machine.host.setInstalled(false);
    machine.advance(1s);
    machine.host.setInstalled(true);
    machine.fan->refresh();
    EXPECT_FALSE(machine.fan->resetBoost());
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST(FanConnection, IsOpenedAgainByTheUsersNextRequest) {
    ConnectedMachine machine;
    machine.host.setInstalled(false);
    machine.advance(1s);
    machine.host.setInstalled(true);
    machine.boost();
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    EXPECT_EQ(machine.message(), "");
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
}

TEST(FanConnection, IsOpenedAgainByARequestAboutTheLid) {
    ConnectedMachine machine;
    machine.host.setInstalled(false);
    machine.advance(1s);
    machine.host.setInstalled(true);
    machine.fan->setLidStayAwake(true);
    machine.settle();
    EXPECT_TRUE(machine.helper.sleepSetting.isSleepDisabled());
}

TEST(FanConnection, IsOpenedAgainByTheAutomationsRequest) {
    ConnectedMachine machine(70);
    machine.host.setInstalled(false);
    machine.advance(1s);
    machine.host.setInstalled(true);
    machine.fan->requestCooling(Kind::balanced, "apps");
    machine.settle();
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
}

TEST(FanConnection, AsksForAStatusAsSoonAsItIsOpen) {
    ConnectedMachine machine;
    machine.host.setInstalled(false);
    machine.advance(1s);
    machine.host.setInstalled(true);
    machine.helper.mac.holdSensorsAt(45);
    machine.fan->setLidStayAwake(false);
    machine.settle();
    EXPECT_EQ(machine.fan->cpuTemp(), 45);
}

// Failed calls

TEST(FanConnection, ShowsTheErrorOfACallAndDropsTheConnection) {
    ConnectedMachine machine;
    machine.host.failCallsWith("the operation ‘status’ is forbidden");
    machine.advance(1s);
    EXPECT_EQ(machine.message(), "XPC-Fehler: the operation ‘status’ is forbidden");
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST(FanConnection, ShowsTheErrorOfEveryKindOfCall) {
    const std::vector<std::function<void(FanController&)>> calls = {
        [](FanController& fan) { fan.refresh(); },
        [](FanController& fan) { fan.resetBoost(); },
        [](FanController& fan) { fan.setLidStayAwake(true); },
        [](FanController& fan) { fan.setFansEnabled(true); },
        [](FanController& fan) { fan.reconcileToOffOnLaunch(); },
    };
    for (const auto& call : calls) {
        ConnectedMachine machine(70);
        machine.host.failCallsWith("no");
        call(*machine.fan);
        machine.settle();
        EXPECT_EQ(machine.message(), "XPC-Fehler: no");
        EXPECT_EQ(machine.host.connectionCount(), 0U);
    }
}

TEST(FanConnection, TimesOutOnAHungHelperAfterFiveSeconds) {
    ConnectedMachine machine;
    machine.host.setHung(true);
    machine.advance(1s);
    machine.advance(4999ms);
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    EXPECT_EQ(machine.message(), "");
    machine.advance(1ms);
    EXPECT_EQ(machine.host.connectionCount(), 0U);
    EXPECT_EQ(machine.message(), "XPC-Fehler: timed out");
}

TEST(FanConnection, ReportsOneFailureForAllCallsUnderWay) {
    ConnectedMachine machine;
    const SignalCount messages(*machine.fan, &FanController::statusMessageChanged);
    machine.host.setHung(true);
    machine.advance(60s);
    EXPECT_EQ(messages.value(), 1);
    EXPECT_EQ(machine.message(), "XPC-Fehler: timed out");
}

TEST(FanConnection, IgnoresWhatTheHelperSaysThroughADroppedConnection) {
    ConnectedMachine machine;
    const SignalCount records(*machine.fan, &FanController::tempTrendChanged);
    // Delivered and answered; but a call behind it fails before the answer arrives.
    machine.fan->refresh();
    machine.mainLoop.async([&] { machine.host.failCallsWith("no"); });
    machine.fan->refresh();
    machine.helper.mac.holdSensorsAt(90);
    machine.settle();
    EXPECT_EQ(machine.message(), "XPC-Fehler: no");
    EXPECT_EQ(records.value(), 0);
    EXPECT_EQ(machine.fan->cpuTemp(), 50);
}

TEST(FanConnection, IgnoresTheDeathOfAHelperItDropped) {
    ConnectedMachine machine;
    machine.host.failCallsWith("no");
    machine.advance(1s);
    machine.host.failCallsWith("");
    machine.killHelper();
    machine.advance(10s);
    EXPECT_EQ(machine.message(), "XPC-Fehler: no");
    EXPECT_EQ(machine.host.launchCount(), 1);
}

TEST(FanConnection, KeepsWhatItLastKnewWithoutAConnection) {
    ConnectedMachine machine;
    machine.boost();
    machine.host.failCallsWith("no");
    machine.advance(30s);
    EXPECT_EQ(machine.fan->cpuTemp(), 50);
    EXPECT_EQ(machine.fan->fans().size(), 1);
    EXPECT_TRUE(machine.fan->isBoosted());
    EXPECT_EQ(machine.fan->targetPercent(), 60);
}

}  // namespace
}  // namespace corvane
