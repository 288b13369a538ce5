#pragma once

#include <array>
#include <string_view>

namespace corvane {

/// The fixed safety policy, shared by the helper, the application and the diagnostics: how hard the fans
/// must at least blow at a given temperature, and from where on the firmware must have them back.
///
/// Constants and pure functions; any thread. Temperatures in °C, percentages 0...100.
struct ThermalCurve {
    /// At or below this the curve asks for nothing.
    static constexpr double rampStartC = 72.0;
    /// At or above this the curve asks for full speed.
    static constexpr double fullSpeedC = 95.0;
    /// Genuine heat, worth telling the user about, from here on.
    static constexpr double warnThresholdC = 85.0;
    /// From here on the helper releases every fan to the firmware.
    static constexpr double criticalReleaseC = 100.0;

    /// Temperature families of the performance cores, the efficiency cores, the CPU and the GPU.
    static constexpr std::array<std::string_view, 4> safetyPrefixes = {"Tp", "Te", "Tc", "Tg"};

    /// Smallest allowed fan percentage at `maxTempC`, the hottest safety sensor: a straight line from 0 % at
    /// `rampStartC` to 100 % at `fullSpeedC`. NaN asks for 100: an unreadable temperature must cool.
    static double requiredPercent(double maxTempC);

    static bool isCritical(double maxTempC);
    static bool isGenuineHeat(double maxTempC);

    /// True for keys of exactly four characters that begin with one of `safetyPrefixes`, case-sensitive.
    static bool isSafetyTempKey(std::string_view key);
};

}  // namespace corvane
