#include <cstddef>
#include <cstdint>

#include "tests/app/fan/ReportedMachine.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = CoolingProfile::Kind;

MemoryUserDefaults::Write write(const char* key, const char* text) {
    return {key, DefaultsValue(std::string(text))};
}

// What a controller begins with

TEST(FanState, BeginsWithoutAnyReading) {
    ReportedMachine machine;
    machine.installer.setInstalled(false);
    machine.open();
    EXPECT_THAT(machine.fan->fans(), IsEmpty());
    EXPECT_EQ(machine.fan->cpuTemp(), std::nullopt);
    EXPECT_EQ(machine.fan->cpuTempSmoothed(), std::nullopt);
    EXPECT_EQ(machine.fan->gpuTemp(), std::nullopt);
    EXPECT_EQ(machine.fan->gpuTempSmoothed(), std::nullopt);
    EXPECT_THAT(machine.fan->tempHistory(), IsEmpty());
    EXPECT_THAT(machine.fan->gpuHistory(), IsEmpty());
    EXPECT_THAT(machine.fan->tempTrend(), IsEmpty());
    EXPECT_EQ(machine.fan->effectivePercent(), 0);
    EXPECT_FALSE(machine.fan->thermalOverride());
    EXPECT_EQ(machine.fan->thermalState(), ThermalState::nominal);
    EXPECT_EQ(machine.message(), "");
}

TEST(FanState, BeginsWithNothingAsked) {
    ReportedMachine machine;
    machine.installer.setInstalled(false);
    machine.open();
    EXPECT_EQ(machine.fan->targetPercent(), 0);
    EXPECT_FALSE(machine.fan->isBoosted());
    EXPECT_EQ(machine.fan->coolingMode(), CoolingMode::automatic);
    EXPECT_EQ(machine.fan->coolingProfile(), Kind::balanced);
    EXPECT_FALSE(machine.fan->fansEnabled());
    EXPECT_EQ(machine.fan->manualPercent(), 100);
    EXPECT_FALSE(machine.fan->autoActive());
    EXPECT_FALSE(machine.fan->autoEngaged());
    EXPECT_EQ(machine.fan->autoFloor(), 0);
    EXPECT_EQ(machine.fan->triggerProfile(), std::nullopt);
    EXPECT_EQ(machine.fan->boostDuration(), 600);
    EXPECT_EQ(machine.fan->boostExpiresAt(), std::nullopt);
    EXPECT_EQ(machine.fan->boostRemainingText(), std::nullopt);
    EXPECT_FALSE(machine.fan->spinningUp());
    EXPECT_EQ(machine.fan->spinUpUntil(), std::nullopt);
    EXPECT_EQ(machine.fan->spinUpRemaining(), std::nullopt);
    EXPECT_FALSE(machine.fan->intendedLidLock());
    EXPECT_EQ(machine.fan->now(), machine.mainLoop.bootTime());
}

TEST(FanState, KeepsFifteenReadingsAndNinetySmoothedValues) {
    EXPECT_EQ(FanController::tempHistoryLimit, 15);
    EXPECT_EQ(FanController::tempTrendLimit, 90);
}

TEST(FanState, BeginsWithTheSystemsThermalState) {
    FanMachine machine;
    machine.thermal.set(ThermalState::serious);
    machine.open();
    EXPECT_EQ(machine.fan->thermalState(), ThermalState::serious);
}

TEST(FanState, AsksTheInstallerWhetherTheHelperIsThereAndUpToDate) {
    for (const bool isInstalled : {false, true}) {
        for (const bool needsUpdate : {false, true}) {
            FanMachine machine;
            machine.installer.setInstalled(isInstalled);
            machine.installer.setNeedsUpdate(needsUpdate);
            machine.open();
            EXPECT_EQ(machine.fan->helperInstalled(), isInstalled);
            EXPECT_EQ(machine.fan->helperNeedsUpdate(), needsUpdate);
        }
    }
}

TEST(FanState, AsksForAStatusAtOnceAndThenEverySecond) {
    FanMachine machine;
    int records = 0;
    machine.host.filterStatus([&](StatusRecord status) {
        ++records;
        return status;
    });
    machine.open();
    EXPECT_EQ(records, 1);
    machine.advance(999ms);
    EXPECT_EQ(records, 1);
    machine.advance(1ms);
    EXPECT_EQ(records, 2);
    machine.advance(60s);
    EXPECT_EQ(records, 62);
}

TEST(FanState, TicksItsTimeWithThePoll) {
    FanMachine machine;
    machine.open();
    const BootTime start = machine.fan->now();
    const SignalCount changes(*machine.fan, &FanController::nowChanged);
    machine.advance(2900ms);
    EXPECT_EQ(machine.fan->now(), start + 2s);
    EXPECT_EQ(changes.value(), 2);
}

TEST(FanState, ConnectsToNothingWhileTheHelperIsNotInstalled) {
    FanMachine machine;
    machine.installer.setInstalled(false);
    machine.open();
    const BootTime start = machine.fan->now();
    machine.advance(60s);
    EXPECT_EQ(machine.host.connectionCount(), 0U);
    EXPECT_EQ(machine.host.launchCount(), 0);
    EXPECT_EQ(machine.fan->statusMessage().toStdString(), "");
    EXPECT_EQ(machine.fan->now(), start + 60s);
}

TEST(FanState, TouchesNoFanUntilItIsToldTo) {
    FanMachine machine;
    machine.defaults.set("fan.coolingMode", std::string("manual"));
    machine.defaults.set("fan.coolingProfile", std::string("max"));
    machine.helper.mac.holdSensorsAt(80);
    machine.open();
    machine.helper.forget();
    machine.advance(60s);
    EXPECT_THAT(machine.helper.writtenTexts(), IsEmpty());
    EXPECT_FALSE(machine.fan->autoEngaged());
    EXPECT_THAT(machine.center.posted(), IsEmpty());
}

// Stored choices

TEST(FanState, FindsNoStoredChoiceAndStoresNone) {
    FanMachine machine;
    machine.open();
    machine.advance(5s);
    EXPECT_THAT(machine.defaults.writes(), IsEmpty());
}

TEST(FanState, RestoresManualModeAndStoresItAgain) {
    FanMachine machine;
    machine.defaults.set("fan.coolingMode", std::string("manual"));
    machine.open();
    EXPECT_EQ(machine.fan->coolingMode(), CoolingMode::manual);
    EXPECT_THAT(machine.defaults.writes(),
                ElementsAre(write("fan.coolingMode", "manual"), write("fan.coolingMode", "manual")));
    EXPECT_FALSE(machine.fan->fansEnabled());
}

TEST(FanState, RestoresAutomaticModeWithoutStoringIt) {
    FanMachine machine;
    machine.defaults.set("fan.coolingMode", std::string("auto"));
    machine.open();
    EXPECT_EQ(machine.fan->coolingMode(), CoolingMode::automatic);
    EXPECT_EQ(machine.defaults.writes().size(), 1U);
    EXPECT_FALSE(machine.fan->autoActive());
}

TEST(FanState, RestoresEachProfileAndStoresItAgain) {
    const std::vector<std::pair<const char*, Kind>> profiles = {
        {"silent", Kind::silent}, {"balanced", Kind::balanced}, {"max", Kind::max}};
    for (const auto& [text, kind] : profiles) {
        FanMachine machine;
        machine.defaults.set("fan.coolingProfile", std::string(text));
        machine.open();
        EXPECT_EQ(machine.fan->coolingProfile(), kind);
        EXPECT_THAT(machine.defaults.writes(),
                    ElementsAre(write("fan.coolingProfile", text), write("fan.coolingProfile", text)));
    }
}

TEST(FanState, RestoresTheModeBeforeTheProfile) {
    FanMachine machine;
    machine.defaults.set("fan.coolingProfile", std::string("silent"));
    machine.defaults.set("fan.coolingMode", std::string("manual"));
    machine.open();
    EXPECT_THAT(machine.defaults.writes(),
                ElementsAre(write("fan.coolingProfile", "silent"), write("fan.coolingMode", "manual"),
                            write("fan.coolingMode", "manual"), write("fan.coolingProfile", "silent")));
}

/// What nobody stores under the mode or the profile.
const std::vector<DefaultsValue>& strangeChoices() {
    static const std::vector<DefaultsValue> choices = {
        std::string("Manual"),     std::string("automatic"),
        std::string("manual "),    std::string("turbo"),
        std::string("Silent"),     std::string("off"),
        std::string(""),           true,
        std::int64_t{1},           1.0,
        std::vector{std::byte{7}},
    };
    return choices;
}

TEST(FanState, IgnoresAStoredModeThatIsNone) {
    for (const DefaultsValue& value : strangeChoices()) {
        FanMachine machine;
        machine.defaults.set("fan.coolingMode", value);
        machine.open();
        EXPECT_EQ(machine.fan->coolingMode(), CoolingMode::automatic);
        EXPECT_EQ(machine.defaults.value("fan.coolingMode"), value);
        EXPECT_EQ(machine.defaults.writes().size(), 1U);
    }
}

TEST(FanState, IgnoresAStoredProfileThatIsNone) {
    for (const DefaultsValue& value : strangeChoices()) {
        FanMachine machine;
        machine.defaults.set("fan.coolingProfile", value);
        machine.open();
        EXPECT_EQ(machine.fan->coolingProfile(), Kind::balanced);
        EXPECT_EQ(machine.defaults.value("fan.coolingProfile"), value);
        EXPECT_EQ(machine.defaults.writes().size(), 1U);
    }
}

// The end

TEST(FanState, EndsBeforeItsFirstRequestIsDelivered) {
    FanMachine machine;
    machine.fan.emplace(FanControllerServices{machine.mainLoop, machine.host, machine.installer,
                                              machine.thermal, machine.defaults, machine.notifier,
                                              machine.lang, machine.log});
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    machine.fan.reset();
    machine.advance(60s);
    EXPECT_EQ(machine.host.connectionCount(), 0U);
    EXPECT_EQ(machine.host.launchCount(), 0);
}

TEST(FanState, EndsWhileTheHelperWorksOnARequest) {
    FanMachine machine;
    machine.open();
    machine.fan->refresh();
    // Runs when the request has been delivered and the reply is still to come.
    machine.mainLoop.async([&] { machine.fan.reset(); });
    machine.advance(60s);
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST(FanState, EndsWhileAReplyIsOnItsWay) {
    FanMachine machine;
    machine.open();
    machine.fan->refresh();
    // Runs one hop later than the helper's answer leaves the helper, and before it arrives.
    machine.mainLoop.async([&] { machine.mainLoop.async([&] { machine.fan.reset(); }); });
    machine.advance(60s);
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST(FanState, EndsWhileTheHelperIsHung) {
    FanMachine machine;
    machine.open();
    machine.host.setHung(true);
    machine.advance(3s);
    machine.fan.reset();
    machine.advance(60s);
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

TEST(FanState, LeavesNoTimerAndNoObserverBehind) {
    FanMachine machine;
    machine.openAt(50);
    machine.fan->setCoolingMode(CoolingMode::manual);
    machine.fan->setFansEnabled(true);
    machine.advance(2s);
    int records = 0;
    machine.host.filterStatus([&](StatusRecord status) {
        ++records;
        return status;
    });
    machine.fan.reset();
    machine.thermal.set(ThermalState::critical);
    machine.advance(700s);
    EXPECT_EQ(records, 0);
    EXPECT_THAT(machine.center.posted(), IsEmpty());
}

TEST(FanState, LeavesTheReleaseToTheHelperWhenItEnds) {
    FanMachine machine;
    machine.openAt(50);
    machine.fan->setCoolingMode(CoolingMode::manual);
    machine.fan->setFansEnabled(true);
    machine.advance(2s);
    machine.fan.reset();
    machine.advance(5s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    machine.advance(4s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

}  // namespace
}  // namespace corvane
