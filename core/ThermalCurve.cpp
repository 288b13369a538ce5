#include "core/ThermalCurve.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr double rampWidthC = 23.0;
static_assert(ThermalCurve::fullSpeedC - ThermalCurve::rampStartC == rampWidthC);

}  // namespace

double ThermalCurve::requiredPercent(double maxTempC) {
    if (maxTempC >= fullSpeedC) {
        return 100.0;
    }
    if (maxTempC <= rampStartC) {
        return 0.0;
    }
    // fmin, not min: of a NaN and a number it returns the number, which makes NaN ask for full speed.
    return std::fmin((maxTempC - rampStartC) / rampWidthC * 100.0, 100.0);
}

bool ThermalCurve::isCritical(double maxTempC) {
    return maxTempC >= criticalReleaseC;
}

bool ThermalCurve::isGenuineHeat(double maxTempC) {
    return maxTempC >= warnThresholdC;
}

bool ThermalCurve::isSafetyTempKey(std::string_view key) {
    return key.size() == 4 &&
           std::find(safetyPrefixes.begin(), safetyPrefixes.end(), key.substr(0, 2)) != safetyPrefixes.end();
}

}  // namespace corvane
