#pragma once

#include <cstdint>

namespace corvane {

/// Noise of the simulated machine's readings: nearly normal, standard deviation 1, mean 0, never beyond
/// `noiseBound`. A function of its arguments alone, so that a reading does not depend on how often and in
/// which order anything was read.
double noiseAt(std::uint64_t seed, std::uint64_t channel, std::uint64_t moment);

/// 2 × the square root of 3: four equally distributed values are added up.
inline constexpr double noiseBound = 3.4641016151377546;

}  // namespace corvane
