#pragma once

#include <optional>

namespace corvane {

/// Whether these count as a fan's slowest and fastest speed, in RPM; none is one that cannot be read. A fan
/// whose controller shows others is not forced: the helper reckons with 32-bit integers and with 0 for what
/// is unknown, and would hold such a fan slower than its firmware lets it turn. A fan that never reaches one
/// RPM is none, nor is a speed that is not a number.
constexpr bool arePlausibleLimits(std::optional<double> minimum, std::optional<double> maximum) {
    constexpr double beyondIntegers = 2147483648.0;
    return minimum && maximum && *minimum >= 0.0 && *minimum < beyondIntegers && *maximum >= 1.0 &&
           *maximum < beyondIntegers;
}

}  // namespace corvane
