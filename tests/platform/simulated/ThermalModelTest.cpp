#include <gtest/gtest.h>

#include "platform/simulated/ThermalModel.h"
#include "tests/platform/simulated/SimulatedMacFixture.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

constexpr ThermalParameters simple{
    .dieToSink = 2.0, .dieCapacity = 5.0, .sinkCapacity = 100.0, .stillAir = 0.5, .movedAir = 0.5};

TEST(ThermalModel, StartsInItsSteadyState) {
    const ThermalModel still(simple, 10.0, 20.0, 0.0);
    EXPECT_DOUBLE_EQ(still.sinkTemperature(), 20.0 + 10.0 / 0.5);
    EXPECT_DOUBLE_EQ(still.dieTemperature(), still.sinkTemperature() + 10.0 * 2.0);
    const ThermalModel cooled(simple, 10.0, 20.0, 1000.0);
    EXPECT_DOUBLE_EQ(cooled.sinkTemperature(), 20.0 + 10.0 / 1.0);
}

TEST(ThermalModel, StaysInItsSteadyState) {
    ThermalModel model(simple, 10.0, 20.0, 2500.0);
    const double die = model.dieTemperature();
    for (int i = 0; i < 10000; ++i) {
        model.step(0.05, 10.0, 20.0, 2500.0);
    }
    EXPECT_NEAR(model.dieTemperature(), die, 1e-9);
}

TEST(ThermalModel, ReachesTheSteadyStateOfANewLoad) {
    ThermalModel model(simple, 0.0, 20.0, 0.0);
    for (int i = 0; i < 100000; ++i) {
        model.step(0.05, 15.0, 20.0, 4000.0);
    }
    const ThermalModel expected(simple, 15.0, 20.0, 4000.0);
    EXPECT_NEAR(model.dieTemperature(), expected.dieTemperature(), 1e-6);
    EXPECT_NEAR(model.sinkTemperature(), expected.sinkTemperature(), 1e-6);
}

TEST(ThermalModel, WarmsTheDieWithItsOwnTimeConstantFirst) {
    ThermalModel model(simple, 0.0, 20.0, 0.0);
    for (int i = 0; i < 1000; ++i) {  // one time constant, 2 K/W x 5 J/K = 10 s
        model.step(0.01, 10.0, 20.0, 0.0);
    }
    // Into a sink that hardly warms up meanwhile: 63 % of 20 K.
    EXPECT_NEAR(model.dieTemperature() - model.sinkTemperature(), 12.6, 0.5);
}

TEST(SimulatedMacHeat, A13InchM1Under22WattsIsAt52DegreesAfterTenSeconds) {
    MacOnVirtualTime machine(macBookPro13());
    machine.mac.setLoad(22.0);
    machine.time.advance(10s);
    EXPECT_NEAR(machine.mac.dieTemperature(), 52.0, 1.5);
}

TEST(SimulatedMacHeat, A13InchM1Under22WattsSettlesAt84Degrees) {
    MacOnVirtualTime machine(macBookPro13());
    machine.mac.setLoad(22.0);
    machine.time.advance(30min);
    EXPECT_NEAR(machine.mac.dieTemperature(), 84.0, 1.0);
    EXPECT_NEAR(machine.mac.fanSpeed(0), 3300.0, 150.0);
}

TEST(SimulatedMacHeat, A16InchM1MaxUnder60WattsSettlesAt90Degrees) {
    MacOnVirtualTime machine(macBookPro16());
    machine.mac.setLoad(60.0);
    machine.time.advance(1h);
    EXPECT_NEAR(machine.mac.dieTemperature(), 90.0, 1.0);
    EXPECT_NEAR(machine.mac.fanSpeed(0), 3600.0, 150.0);
    EXPECT_GT(machine.mac.fanSpeed(1), machine.mac.fanSpeed(0)) << "its range is wider";
}

TEST(SimulatedMacHeat, AnM1MiniUnder24WattsStaysAtItsMinimumSpeed) {
    MacOnVirtualTime machine(macMini());
    machine.mac.setLoad(24.0);
    machine.time.advance(1h);
    EXPECT_NEAR(machine.mac.dieTemperature(), 75.0, 1.0);
    EXPECT_NEAR(machine.mac.fanSpeed(0), 1700.0, 20.0);
}

TEST(SimulatedMacHeat, EveryModelIsCoolAndQuietWhenIdle) {
    for (const MacModel& model : macModels()) {
        MacOnVirtualTime machine(model);
        machine.time.advance(1h);
        EXPECT_LT(machine.mac.dieTemperature(), 50.0) << model.name;
        EXPECT_GT(machine.mac.dieTemperature(), 25.0) << model.name;
    }
}

TEST(SimulatedMacHeat, TheChipProtectsItselfFromAnyLoad) {
    for (const MacModel& model : macModels()) {
        MacOnVirtualTime machine(model);
        machine.mac.setLoad(300.0);
        for (int second = 0; second < 600; ++second) {
            machine.time.advance(1s);
            ASSERT_LT(machine.mac.dieTemperature(), MacHardware::throttledAt + 1.0) << model.name;
        }
        EXPECT_GT(machine.mac.dieTemperature(), 95.0) << model.name;
    }
}

TEST(SimulatedMacHeat, FollowsTheAmbientTemperature) {
    MacOnVirtualTime machine(macBookAir());
    const double before = machine.mac.dieTemperature();
    machine.mac.setAmbient(35.0);
    machine.time.advance(2h);
    EXPECT_NEAR(machine.mac.dieTemperature(), before + 10.0, 0.01);
}

TEST(SimulatedMacHeat, AForcedFanCoolsHarderThanTheFirmware) {
    MacOnVirtualTime machine(macBookPro13());
    machine.mac.setLoad(22.0);
    machine.time.advance(30min);
    const double firmware = machine.mac.dieTemperature();
    ASSERT_EQ(machine.smc.writeByte("F0Md", 1), SmcResult::success);
    ASSERT_EQ(machine.smc.writeFloat("F0Tg", 7199.0F), SmcResult::success);
    machine.time.advance(10min);
    EXPECT_LT(machine.mac.dieTemperature(), firmware - 5.0);
}

TEST(SimulatedMacHeat, DoesNotDependOnHowOftenItIsAsked) {
    MacOnVirtualTime asked(macBookPro16());
    MacOnVirtualTime leftAlone(macBookPro16());
    asked.mac.setLoad(70.0);
    leftAlone.mac.setLoad(70.0);
    for (int i = 0; i < 100000; ++i) {
        asked.time.advance(7ms);
        static_cast<void>(asked.smc.read("Tp09"));
    }
    leftAlone.time.advance(700s);
    EXPECT_EQ(asked.mac.dieTemperature(), leftAlone.mac.dieTemperature());
    EXPECT_EQ(asked.mac.fanSpeed(1), leftAlone.mac.fanSpeed(1));
    EXPECT_EQ(asked.smc.readFloat("Tp09"), leftAlone.smc.readFloat("Tp09"));
    EXPECT_EQ(asked.smc.readFloat("F0Ac"), leftAlone.smc.readFloat("F0Ac"));
}

TEST(SimulatedMacHeat, HasSettledAfterAWeekOfSuspend) {
    MacOnVirtualTime machine(macBookPro16());
    machine.mac.setLoad(60.0);
    machine.time.suspend(24h * 7);
    EXPECT_NEAR(machine.mac.dieTemperature(), 90.0, 1.0);
}

}  // namespace
}  // namespace corvane
