#include "tests/app/fan/ReportedMachine.h"

namespace corvane {
namespace {

/// An installer that is done before it returns.
class ImmediateInstaller final : public HelperInstaller {
public:
    [[nodiscard]] bool isInstalled() const override { return false; }
    [[nodiscard]] bool needsUpdate() const override { return false; }
    void install(Done done) override {
        ++installations;
        done(InstallResult::success());
    }

    int installations = 0;
};

/// A fan machine that has no helper yet.
class BareMachine : public FanMachine {
public:
    BareMachine() {
        installer.setInstalled(false);
        host.setInstalled(false);
        helper.mac.holdSensorsAt(50);
        open();
    }

    void finish(const InstallResult& result) {
        host.setInstalled(host.isRunning() || result == InstallResult::success());
        installer.finish(result);
        settle();
    }
    [[nodiscard]] std::string message() const { return fan->statusMessage().toStdString(); }
};

TEST(FanInstall, AsksTheUserAndWaits) {
    BareMachine machine;
    machine.fan->installHelper();
    machine.advance(60s);
    EXPECT_EQ(machine.installer.prompts(), 1);
    EXPECT_FALSE(machine.fan->helperInstalled());
    EXPECT_EQ(machine.message(), "");
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST(FanInstall, ConnectsToTheHelperThatWasInstalled) {
    BareMachine machine;
    machine.fan->installHelper();
    machine.finish(InstallResult::success());
    EXPECT_TRUE(machine.fan->helperInstalled());
    EXPECT_FALSE(machine.fan->helperNeedsUpdate());
    EXPECT_EQ(machine.message(), "Helper installiert");
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    EXPECT_EQ(machine.fan->cpuTemp(), 50);
}

TEST(FanInstall, LetsTheFansBeTurnedAtOnce) {
    BareMachine machine;
    machine.fan->setFansEnabled(true);
    EXPECT_FALSE(machine.fan->fansEnabled());
    machine.fan->installHelper();
    machine.finish(InstallResult::success());
    machine.fan->setCoolingMode(CoolingMode::manual);
    machine.fan->setFansEnabled(true);
    machine.advance(1s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
}

TEST(FanInstall, SaysThatItWasCancelled) {
    BareMachine machine;
    machine.fan->installHelper();
    machine.finish(InstallResult::cancelled());
    EXPECT_EQ(machine.message(), "Installation abgebrochen");
    EXPECT_FALSE(machine.fan->helperInstalled());
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST(FanInstall, SaysWhyItFailed) {
    BareMachine machine;
    machine.fan->installHelper();
    machine.finish(InstallResult::failure("/Library: no space left — 0 bytes"));
    EXPECT_EQ(machine.message(), "Fehler: /Library: no space left — 0 bytes");
    EXPECT_EQ(machine.log.count(
                  "Corvane: the fan helper could not be installed: /Library: no space left — 0 bytes"),
              1U);
    EXPECT_FALSE(machine.fan->helperInstalled());
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST(FanInstall, SaysItInGermanInEitherLanguage) {
    for (const char* language : {"en", "de"}) {
        BareMachine machine;
        machine.locale.prefer({language});
        machine.fan->installHelper();
        machine.finish(InstallResult::cancelled());
        EXPECT_EQ(machine.message(), "Installation abgebrochen");
        machine.fan->installHelper();
        machine.finish(InstallResult::success());
        EXPECT_EQ(machine.message(), "Helper installiert");
    }
}

TEST(FanInstall, ReplacesTheConnectionAfterAnUpdate) {
    FanMachine machine;
    machine.installer.setNeedsUpdate(true);
    machine.openAt(50);
    EXPECT_TRUE(machine.fan->helperNeedsUpdate());
    const SignalCount records(*machine.fan, &FanController::tempTrendChanged);
    machine.fan->installHelper();
    // Under way through the old connection, and never answered.
    machine.fan->refresh();
    machine.installer.finish(InstallResult::success());
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    machine.settle();
    EXPECT_EQ(records.value(), 1);
    EXPECT_FALSE(machine.fan->helperNeedsUpdate());
    EXPECT_TRUE(machine.fan->helperInstalled());
}

TEST(FanInstall, OpensAConnectionWhenTheOldOneWasLost) {
    FanMachine machine;
    machine.openAt(50);
    machine.host.failCallsWith("no");
    machine.advance(1s);
    machine.host.failCallsWith("");
    ASSERT_EQ(machine.host.connectionCount(), 0U);
    machine.fan->installHelper();
    machine.installer.finish(InstallResult::success());
    machine.settle();
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    EXPECT_EQ(machine.fan->statusMessage().toStdString(), "Helper installiert");
}

TEST(FanInstall, KeepsHelperAndConnectionWhenAnUpdateDoesNotHappen) {
    for (const InstallResult& result : {InstallResult::cancelled(), InstallResult::failure("no")}) {
        FanMachine machine;
        machine.installer.setNeedsUpdate(true);
        machine.openAt(50);
        const SignalCount records(*machine.fan, &FanController::tempTrendChanged);
        machine.fan->installHelper();
        machine.fan->refresh();
        machine.installer.finish(result);
        machine.settle();
        EXPECT_EQ(records.value(), 1);
        EXPECT_TRUE(machine.fan->helperInstalled());
        EXPECT_TRUE(machine.fan->helperNeedsUpdate());
        EXPECT_EQ(machine.host.connectionCount(), 1U);
    }
}

TEST(FanInstall, AnnouncesWhatChanges) {
    BareMachine machine;
    const SignalCount installed(*machine.fan, &FanController::helperInstalledChanged);
    const SignalCount messages(*machine.fan, &FanController::statusMessageChanged);
    machine.fan->installHelper();
    machine.finish(InstallResult::success());
    EXPECT_EQ(installed.value(), 1);
    EXPECT_EQ(messages.value(), 1);
}

TEST(FanInstall, HappensOnceAtATime) {
    BareMachine machine;
    machine.fan->installHelper();
    machine.fan->installHelper();
    machine.advance(1s);
    machine.fan->installHelper();
    EXPECT_EQ(machine.installer.prompts(), 1);
}

TEST(FanInstall, CanBeTriedAgainHoweverItEnded) {
    BareMachine machine;
    int prompts = 0;
    for (const InstallResult& result : {InstallResult::cancelled(), InstallResult::failure("no"),
                                        InstallResult::success(), InstallResult::success()}) {
        machine.fan->installHelper();
        EXPECT_EQ(machine.installer.prompts(), ++prompts);
        machine.finish(result);
    }
}

TEST(FanInstall, MayBeDoneBeforeTheCallReturns) {
    FanMachine machine;
    machine.helper.mac.holdSensorsAt(50);
    ImmediateInstaller installer;
    machine.fan.emplace(FanControllerServices{machine.mainLoop, machine.host, installer, machine.thermal,
                                              machine.defaults, machine.notifier, machine.lang, machine.log});
    machine.fan->installHelper();
    EXPECT_TRUE(machine.fan->helperInstalled());
    EXPECT_EQ(machine.fan->statusMessage().toStdString(), "Helper installiert");
    machine.fan->installHelper();
    EXPECT_EQ(installer.installations, 2);
}

TEST(FanInstall, MayOutliveTheController) {
    for (const InstallResult& result :
         {InstallResult::success(), InstallResult::cancelled(), InstallResult::failure("no")}) {
        BareMachine machine;
        machine.fan->installHelper();
        machine.fan.reset();
        machine.finish(result);
        EXPECT_EQ(machine.host.connectionCount(), 0U);
    }
}

TEST(FanInstall, EndsABoostWithTheOldHelper) {
    FanMachine machine;
    machine.openAt(50);
    machine.fan->setCoolingMode(CoolingMode::manual);
    machine.fan->setFansEnabled(true);
    machine.advance(2s);
    machine.fan->installHelper();
    machine.killHelper();
    machine.installer.finish(InstallResult::success());
    machine.settle();
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_FALSE(machine.fan->isBoosted());
    EXPECT_EQ(machine.fan->statusMessage().toStdString(), "Helper installiert");
}

}  // namespace
}  // namespace corvane
