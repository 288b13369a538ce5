#include "platform/simulated/Noise.h"

namespace corvane {

namespace {

/// One round of SplitMix64.
constexpr std::uint64_t mixed(std::uint64_t value) {
    value += 0x9E3779B97F4A7C15U;
    value = (value ^ value >> 30U) * 0xBF58476D1CE4E5B9U;
    value = (value ^ value >> 27U) * 0x94D049BB133111EBU;
    return value ^ value >> 31U;
}

}  // namespace

double noiseAt(std::uint64_t seed, std::uint64_t channel, std::uint64_t moment) {
    std::uint64_t bits = mixed(mixed(mixed(seed) ^ channel) ^ moment);
    // Four 16-bit values, each moved to the middle of its step: the sum is symmetric around 2 × 65536.
    std::uint64_t sum = 2;
    for (int i = 0; i < 4; ++i) {
        sum += bits & 0xFFFFU;
        bits >>= 16U;
    }
    // The sum of four has a variance of a third; stretched to 1.
    return (static_cast<double>(sum) / 65536.0 - 2.0) * noiseBound / 2.0;
}

}  // namespace corvane
