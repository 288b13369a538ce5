#include <cmath>

#include <gtest/gtest.h>

#include "platform/simulated/Noise.h"
#include "tests/platform/simulated/SimulatedMacFixture.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

struct Spread {
    double mean = 0.0;
    double deviation = 0.0;
    double largest = 0.0;
};

template <typename Sample>
Spread spreadOf(int count, Sample sample) {
    double sum = 0.0;
    double squares = 0.0;
    double largest = 0.0;
    for (int i = 0; i < count; ++i) {
        const double value = sample(i);
        sum += value;
        squares += value * value;
        largest = std::max(largest, std::abs(value));
    }
    const double mean = sum / count;
    return {mean, std::sqrt(squares / count - mean * mean), largest};
}

TEST(Noise, HasMeanZeroDeviationOneAndABound) {
    const Spread spread = spreadOf(200000, [](int i) { return noiseAt(1, 2, static_cast<unsigned>(i)); });
    EXPECT_NEAR(spread.mean, 0.0, 0.01);
    EXPECT_NEAR(spread.deviation, 1.0, 0.01);
    EXPECT_LE(spread.largest, noiseBound);
    EXPECT_GT(spread.largest, 3.0);
}

TEST(Noise, IsTheSameForTheSameSeedAndOtherForAnother) {
    EXPECT_EQ(noiseAt(1, 2, 3), noiseAt(1, 2, 3));
    EXPECT_NE(noiseAt(1, 2, 3), noiseAt(2, 2, 3));
    EXPECT_NE(noiseAt(1, 2, 3), noiseAt(1, 3, 3));
    EXPECT_NE(noiseAt(1, 2, 3), noiseAt(1, 2, 4));
}

TEST(SimulatedMacNoise, TachometersScatterByThreeRpmAroundTheSpeed) {
    MacOnVirtualTime machine(macMini());
    const Spread spread = spreadOf(20000, [&](int) {
        machine.time.advance(50ms);
        return static_cast<double>(machine.smc.readFloat("F0Ac").value_or(0.0F)) - machine.mac.fanSpeed(0);
    });
    EXPECT_NEAR(spread.mean, 0.0, 0.1);
    EXPECT_NEAR(spread.deviation, 3.0, 0.1);
    EXPECT_LE(spread.largest, 3.0 * noiseBound + 0.001);
}

TEST(SimulatedMacNoise, AStandingFanReadsExactlyZero) {
    MacOnVirtualTime machine(macBookPro16());
    for (int i = 0; i < 1000; ++i) {
        machine.time.advance(50ms);
        ASSERT_EQ(machine.smc.readFloat("F0Ac"), 0.0F);
        ASSERT_EQ(machine.smc.readFloat("F1Ac"), 0.0F);
    }
}

TEST(SimulatedMacNoise, SensorsScatterByATenthOfADegree) {
    MacOnVirtualTime machine(tinyMac());
    const Spread spread = spreadOf(20000, [&](int) {
        machine.time.advance(50ms);
        return static_cast<double>(machine.smc.readFloat("Tp09").value_or(0.0F)) -
               machine.mac.dieTemperature();
    });
    EXPECT_NEAR(spread.mean, 0.0, 0.01);
    EXPECT_NEAR(spread.deviation, 0.1, 0.005);
    EXPECT_LE(spread.largest, 0.1 * noiseBound + 0.001);
}

TEST(SimulatedMacNoise, ComesFromTheSeed) {
    MacOnVirtualTime first(macMini(), 7);
    MacOnVirtualTime same(macMini(), 7);
    MacOnVirtualTime other(macMini(), 8);
    int differences = 0;
    for (int i = 0; i < 100; ++i) {
        for (MacOnVirtualTime* machine : {&first, &same, &other}) {
            machine->time.advance(130ms);
        }
        const auto reading = first.smc.readFloat("Tp09");
        ASSERT_EQ(reading, same.smc.readFloat("Tp09"));
        differences += reading == other.smc.readFloat("Tp09") ? 0 : 1;
    }
    EXPECT_GT(differences, 90);
}

}  // namespace
}  // namespace corvane
