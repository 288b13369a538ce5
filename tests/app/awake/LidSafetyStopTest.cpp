#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/awake/LidMachine.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using testing::ElementsAre;

constexpr const char* englishTitle = "🌡️ Closed-lid stopped";
constexpr const char* germanTitle = "🌡️ Zugeklappt-wach beendet";
constexpr const char* englishBattery = "Battery below 15% — closed-lid stopped so the Mac can sleep.";
constexpr const char* germanBattery =
    "Akku unter 15 % — Zugeklappt-wach beendet, damit der Mac schlafen kann.";
constexpr const char* englishHeat = "Got too hot — closed-lid auto-stopped for safety.";
constexpr const char* germanHeat = "Zu heiß geworden — Zugeklappt-wach automatisch beendet (Sicherheit).";

class LidSafetyStop : public testing::Test {
protected:
    LidSafetyStop() {
        machine.openLid();
        machine.switchOn();
    }

    LidManager& lid() { return *machine.lid; }

    void expectReleased() {
        EXPECT_FALSE(lid().enabled());
        EXPECT_FALSE(machine.isSleepDisabled());
        EXPECT_TRUE(machine.power.held().empty());
        EXPECT_EQ(machine.fan->triggerProfile(), std::nullopt);
        static_cast<void>(machine.takeLidRequests());
        machine.advance(1min);
        EXPECT_EQ(machine.takeLidRequests(), Texts{}) << "the watchdog has ended";
    }

    LidMachine machine;
};

TEST_F(LidSafetyStop, ComesAtTheNextTickOnALowBattery) {
    machine.powerSources.set(onBattery(15));
    machine.advance(20s - 1ms);
    EXPECT_TRUE(lid().enabled());
    machine.advance(1ms);
    EXPECT_EQ(machine.lastAutoOff(), englishBattery);
    EXPECT_EQ(machine.postedUnder(englishTitle), Texts{englishBattery});
    expectReleased();
    EXPECT_EQ(machine.postedUnder(englishTitle).size(), 1U);
}

TEST_F(LidSafetyStop, SaysSoInGerman) {
    machine.locale.prefer({"de-AT"});
    machine.powerSources.set(onBattery(0));
    machine.advance(20s);
    EXPECT_EQ(machine.lastAutoOff(), germanBattery);
    machine.powerSources.set({});
    machine.switchOn();
    machine.thermal.set(ThermalState::serious);
    machine.settle();
    EXPECT_EQ(machine.lastAutoOff(), germanHeat);
    EXPECT_EQ(machine.postedUnder(germanTitle), (Texts{germanBattery, germanHeat}));
}

TEST_F(LidSafetyStop, IsNotMadeOnABatteryThatIsNotKnownToBeLow) {
    for (const auto& sources :
         {onBattery(16), onBattery(100), onBattery(std::nullopt), onMains(1), onMains(std::nullopt),
          SimulatedPowerSources::Descriptions{}, SimulatedPowerSources::Descriptions{std::nullopt}}) {
        machine.powerSources.set(sources);
        machine.advance(1min);
        EXPECT_TRUE(lid().enabled());
    }
    EXPECT_EQ(machine.postedTitles(), Texts{});
}

TEST_F(LidSafetyStop, IsNotMadeOnALowBatteryByWhomDoesNotWantIt) {
    machine.defaults.set(LowBatteryAutoStop::setting, false);
    machine.powerSources.set(onBattery(1));
    machine.advance(1h);
    EXPECT_TRUE(lid().enabled());
    machine.defaults.set(LowBatteryAutoStop::setting, true);
    machine.advance(20s);
    EXPECT_FALSE(lid().enabled());
}

TEST_F(LidSafetyStop, IsWantedUnlessASwitchSaysOtherwise) {
    for (const DefaultsValue& value : {DefaultsValue(std::string("false")), DefaultsValue(std::int64_t{0})}) {
        machine.powerSources.set({});
        machine.switchOn();
        machine.defaults.set(LowBatteryAutoStop::setting, value);
        machine.powerSources.set(onBattery(15));
        machine.advance(20s);
        EXPECT_FALSE(lid().enabled());
    }
}

TEST_F(LidSafetyStop, ComesBackToAUserWhoSwitchesOnAgainBeforeTheBatteryIsCharged) {
    machine.powerSources.set(onBattery(14));
    machine.advance(20s);
    ASSERT_FALSE(lid().enabled());
    machine.switchOn();
    EXPECT_EQ(machine.lastAutoOff(), "");
    EXPECT_TRUE(machine.isSleepDisabled());
    machine.advance(20s);
    EXPECT_EQ(machine.lastAutoOff(), englishBattery);
    EXPECT_EQ(machine.postedUnder(englishTitle).size(), 2U);
    expectReleased();
}

TEST_F(LidSafetyStop, ComesAtOnceOnHeat) {
    machine.advance(5s);
    machine.thermal.set(ThermalState::serious);
    machine.settle();
    EXPECT_EQ(machine.lastAutoOff(), englishHeat);
    EXPECT_EQ(machine.postedUnder(englishTitle), Texts{englishHeat});
    expectReleased();
}

TEST_F(LidSafetyStop, ComesOnCriticalHeat) {
    machine.thermal.set(ThermalState::critical);
    machine.settle();
    EXPECT_EQ(machine.lastAutoOff(), englishHeat);
    expectReleased();
}

TEST_F(LidSafetyStop, IsNotMadeWhileTheSystemFeelsFair) {
    machine.thermal.set(ThermalState::fair);
    machine.advance(1h);
    EXPECT_TRUE(lid().enabled());
    EXPECT_EQ(machine.postedTitles(), Texts{});
}

TEST_F(LidSafetyStop, IsNotMadeByATemperature) {
    machine.helper.mac.holdSensorsAt(99);
    machine.advance(10min);
    EXPECT_TRUE(lid().enabled());
    EXPECT_TRUE(machine.isSleepDisabled());
}

TEST_F(LidSafetyStop, IsMadeOnHeatByWhomDoesNotWantItOnALowBattery) {
    machine.defaults.set(LowBatteryAutoStop::setting, false);
    machine.powerSources.set(onBattery(1));
    machine.switchOff();
    machine.thermal.set(ThermalState::critical);
    machine.switchOn();
    machine.advance(20s);
    EXPECT_EQ(machine.lastAutoOff(), englishHeat);
}

TEST_F(LidSafetyStop, WaitsForTheNextTickWhenItIsHotAlready) {
    machine.switchOff();
    machine.thermal.set(ThermalState::serious);
    machine.switchOn();
    machine.advance(20s - 1ms);
    EXPECT_TRUE(lid().enabled());
    machine.advance(1ms);
    EXPECT_EQ(machine.lastAutoOff(), englishHeat);
    expectReleased();
}

TEST_F(LidSafetyStop, NamesTheBatteryAloneWhenItIsHotToo) {
    machine.switchOff();
    machine.thermal.set(ThermalState::critical);
    machine.powerSources.set(onBattery(10));
    machine.switchOn();
    machine.advance(20s);
    EXPECT_EQ(machine.postedUnder(englishTitle), Texts{englishBattery});
}

TEST_F(LidSafetyStop, LeavesAModeThatIsOffAlone) {
    machine.switchOff();
    machine.thermal.set(ThermalState::critical);
    machine.powerSources.set(onBattery(1));
    machine.advance(1h);
    EXPECT_EQ(machine.lastAutoOff(), "");
    EXPECT_EQ(machine.postedUnder(englishTitle), Texts{});
}

TEST_F(LidSafetyStop, TellsWhyOnlyAfterTheModeHasEnded) {
    Texts told;
    QObject::connect(&lid(), &LidManager::enabledChanged,
                     [&] { told.push_back("enabled, " + machine.lastAutoOff()); });
    QObject::connect(&lid(), &LidManager::lastAutoOffChanged,
                     [&] { told.push_back(lid().enabled() ? "on" : "off"); });
    machine.thermal.set(ThermalState::serious);
    EXPECT_THAT(told, ElementsAre("enabled, ", "off"));
}

TEST_F(LidSafetyStop, ComesAsTheComputerWakesUpWithALowBattery) {
    machine.helper.time.suspend(3h);
    machine.powerSources.set(onBattery(3));
    machine.settle();
    EXPECT_EQ(machine.postedUnder(englishTitle), Texts{englishBattery});
    EXPECT_FALSE(lid().enabled());
}

TEST_F(LidSafetyStop, ReleasesEverythingWhenNothingMayBePosted) {
    machine.center.setAuthorization(NotificationAuthorization::denied);
    machine.thermal.set(ThermalState::serious);
    machine.settle();
    EXPECT_EQ(machine.lastAutoOff(), englishHeat);
    EXPECT_EQ(machine.postedTitles(), Texts{});
    expectReleased();
}

TEST_F(LidSafetyStop, ComesOnHeatWithoutAFanControllerToo) {
    machine.fan.reset();
    machine.thermal.set(ThermalState::serious);
    machine.settle();
    EXPECT_FALSE(lid().enabled());
    EXPECT_EQ(machine.lastAutoOff(), englishHeat);
    EXPECT_EQ(machine.postedUnder(englishTitle), Texts{englishHeat});
}

}  // namespace
}  // namespace corvane
