#include <gtest/gtest.h>

#include "tests/app/fan/FanMachine.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;
using Texts = std::vector<std::string>;

/// Automatic mode, under the silent profile if a test says so: 1.5 %/K from 62 °C, 2 %/K from 72 °C.
struct FanAuto : testing::Test {
    FanController& fan() { return *machine.fan; }

    void openAt(float celsius) {
        machine.openAt(celsius);
        static_cast<void>(machine.takeRequests());
    }
    /// Switched on at `celsius` under `profile`, and settled.
    void cool(float celsius, Kind profile = Kind::balanced) {
        openAt(celsius);
        fan().setCoolingProfile(profile);
        fan().setFansEnabled(true);
        machine.advance(2s);
        static_cast<void>(machine.takeRequests());
    }
    /// Goes on at `celsius` until both medians have seen nothing else.
    void settleAt(float celsius) {
        machine.helper.mac.holdSensorsAt(celsius);
        machine.advance(16s);
    }

    FanMachine machine;
};

TEST_F(FanAuto, IsArmedByTheSwitchAndWaitsForHeat) {
    openAt(52);
    fan().setFansEnabled(true);
    machine.advance(5s);
    EXPECT_TRUE(fan().autoActive());
    EXPECT_FALSE(fan().autoEngaged());
    EXPECT_EQ(machine.takeRequests(), Texts{});
    settleAt(62);
    EXPECT_TRUE(fan().autoEngaged());
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 25"});
    EXPECT_EQ(fan().targetPercent(), 25);
    EXPECT_EQ(fan().autoFloor(), 25);
    EXPECT_EQ(machine.heldFloor(), 25);
    EXPECT_EQ(machine.helper.mac.fanTarget(0), 2000);
}

TEST_F(FanAuto, HoldsItsFloorWithoutAnEnd) {
    cool(62);
    EXPECT_EQ(fan().boostExpiresAt(), std::nullopt);
    machine.advance(2h);
    EXPECT_EQ(machine.heldFloor(), 25);
    EXPECT_EQ(machine.takeRequests(), Texts{}) << "a floor that stays is not sent again";
    EXPECT_TRUE(machine.center.posted().empty());
}

TEST_F(FanAuto, LeavesTheSlidersFloorAlone) {
    cool(62);
    EXPECT_EQ(fan().manualPercent(), 100);
}

TEST_F(FanAuto, BeginsWithTheFirstReading) {
    machine.helper.mac.holdSensorsAt(62);
    machine.open();
    fan().setFansEnabled(true);
    machine.settle();
    EXPECT_EQ(fan().tempHistory().size(), 2);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 25"});
}

TEST_F(FanAuto, WaitsForAReadingWhenItIsSwitchedOnBeforeTheFirst) {
    machine.helper.mac.holdSensorsAt(62);
    machine.report([] { return StatusRecord(); });
    machine.open();
    fan().setFansEnabled(true);
    machine.advance(10s);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_FALSE(fan().autoEngaged());
    machine.reportAsIs();
    machine.advance(1s);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 25"});
}

TEST_F(FanAuto, FollowsTheHotterOfCpuAndGpu) {
    FanMachine hotGpu(macWithSensors({sensor::fixed("Tg0f", 62.0F), sensor::fixed("Tp09", 40.0F)}));
    hotGpu.open();
    hotGpu.fan->setFansEnabled(true);
    hotGpu.advance(5s);
    EXPECT_EQ(hotGpu.heldFloor(), 25);
    FanMachine hotCpu(macWithSensors({sensor::fixed("Tg0f", 40.0F), sensor::fixed("Tp09", 62.0F)}));
    hotCpu.open();
    hotCpu.fan->setFansEnabled(true);
    hotCpu.advance(5s);
    EXPECT_EQ(hotCpu.heldFloor(), 25);
}

TEST_F(FanAuto, IsNotMovedByAFewSpikes) {
    cool(62);
    machine.report([] {
        StatusRecord record;
        record.set(StatusKey::isBoosted, true);
        record.set(StatusKey::cpuTemp, 90.0);
        return record;
    });
    machine.advance(3s);
    ASSERT_EQ(fan().cpuTemp(), 90);
    machine.reportAsIs();
    machine.advance(30s);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_TRUE(fan().isBoosted());
}

TEST_F(FanAuto, SendsAChangeOfExactlyTwoPoints) {
    cool(73, Kind::silent);
    ASSERT_EQ(machine.heldFloor(), 17);
    settleAt(74);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 19"});
    settleAt(73);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 17"});
    EXPECT_EQ(machine.heldFloor(), 17);
}

TEST_F(FanAuto, KeepsASmallerChangeToItself) {
    cool(73, Kind::silent);
    settleAt(73.984375F);
    EXPECT_EQ(fan().autoFloor(), 18.96875);
    EXPECT_EQ(fan().targetPercent(), 17);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(machine.heldFloor(), 17);
}

TEST_F(FanAuto, SendsItsFirstFloorHoweverSmall) {
    cool(50);
    settleAt(52.5F);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 1.25"});
    EXPECT_EQ(machine.heldFloor(), 1.25);
}

TEST_F(FanAuto, SendsARiseOfOneAndAHalfPointsASecondWheneverTwoAreReached) {
    cool(63, Kind::silent);
    ASSERT_EQ(machine.heldFloor(), 1.5);
    for (int celsius = 64; celsius <= 71; ++celsius) {
        machine.helper.mac.holdSensorsAt(static_cast<float>(celsius));
        machine.advance(1s);
    }
    settleAt(71);
    EXPECT_EQ(machine.takeRequests(), (Texts{"floor 4.5", "floor 7.5", "floor 10.5", "floor 13.5"}));
}

TEST_F(FanAuto, SendsEvenTheSameFloorWhenItIsArmedAgain) {
    cool(62);
    fan().setAuto(true);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 25"});
}

TEST_F(FanAuto, LetsGoAtTheSixthZeroInARowAndNotAtTheFifth) {
    cool(62);
    machine.helper.mac.holdSensorsAt(50);
    while (fan().autoFloor() > 0) {
        machine.advance(1s);
    }
    machine.advance(4s);
    EXPECT_TRUE(fan().autoEngaged());
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(machine.heldFloor(), 25);
    machine.advance(1s);
    EXPECT_FALSE(fan().autoEngaged());
    EXPECT_EQ(fan().targetPercent(), 0);
    EXPECT_FALSE(fan().isBoosted());
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_TRUE(fan().autoActive()) << "ready for the next heat";
    machine.advance(30s);
    EXPECT_EQ(machine.takeRequests(), Texts{}) << "what is released is not released again";
}

TEST_F(FanAuto, CountsTheZerosAnewAfterAnyHeat) {
    cool(55);
    fan().setCoolingProfile(Kind::silent);  // which asks for nothing: the first zero
    machine.advance(4s);
    fan().setCoolingProfile(Kind::balanced);
    machine.settle();
    fan().setCoolingProfile(Kind::silent);
    machine.advance(4s);
    EXPECT_TRUE(fan().autoEngaged());
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 7.5"});
    machine.advance(1s);
    EXPECT_FALSE(fan().autoEngaged());
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
}

TEST_F(FanAuto, ChangesNothingWithoutATemperature) {
    cool(62);
    machine.report([] {
        StatusRecord record;
        record.set(StatusKey::isBoosted, true);
        record.set(StatusKey::cpuTemp, -5.0);
        return record;
    });
    machine.advance(60s);
    EXPECT_EQ(fan().cpuTempSmoothed(), -5);
    EXPECT_TRUE(fan().autoEngaged());
    EXPECT_EQ(fan().autoFloor(), 25);
    EXPECT_EQ(fan().targetPercent(), 25);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(machine.heldFloor(), 25);
}

TEST_F(FanAuto, StaysEngagedWhenThereIsNobodyToAsk) {
    openAt(62);
    machine.host.setInstalled(false);
    machine.advance(1s);
    fan().setFansEnabled(true);
    machine.settle();
    EXPECT_TRUE(fan().autoEngaged());
    EXPECT_EQ(fan().targetPercent(), 25);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(fan().statusMessage(), "Helper-Verbindung verloren");
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanAuto, LeavesTheFansToTheFirmwareAfterTheHelperLetThemGo) {
    cool(86);
    ASSERT_EQ(machine.heldFloor(), 100);
    settleAt(101);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_FALSE(fan().isBoosted());
    settleAt(90);
    EXPECT_EQ(machine.takeRequests(), Texts{}) << "100 % was asked for already";
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    settleAt(75);
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 65"});
    EXPECT_EQ(machine.heldFloor(), 65);
}

TEST_F(FanAuto, DisarmedReleasesAndForgetsItsFloor) {
    cool(62);
    fan().setAuto(false);
    EXPECT_FALSE(fan().autoActive());
    EXPECT_FALSE(fan().autoEngaged());
    EXPECT_EQ(fan().autoFloor(), 0);
    EXPECT_EQ(fan().targetPercent(), 0);
    machine.advance(10s);
    EXPECT_EQ(machine.takeRequests(), Texts{"stop"});
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST_F(FanAuto, DoesNothingInManualModeThoughArmed) {
    openAt(62);
    fan().setCoolingMode(CoolingMode::manual);
    fan().setAuto(true);
    machine.advance(20s);
    EXPECT_FALSE(fan().autoEngaged());
    EXPECT_EQ(machine.takeRequests(), Texts{});
}

TEST_F(FanAuto, AsksForPermissionToNotifyWhenItIsArmed) {
    openAt(50);
    machine.center.setAuthorization(NotificationAuthorization::notDetermined);
    fan().setFansEnabled(true);
    machine.settle();
    EXPECT_EQ(machine.center.authorizationRequests(), 1);
    fan().setAuto(true);
    machine.settle();
    EXPECT_EQ(machine.center.authorizationRequests(), 2);
    fan().setAuto(false);
    fan().setFansEnabled(false);
    machine.settle();
    EXPECT_EQ(machine.center.authorizationRequests(), 2);
}

}  // namespace
}  // namespace corvane
