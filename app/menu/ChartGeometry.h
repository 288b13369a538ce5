#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "core/CoolingProfile.h"

namespace corvane {

// What the panel's charts draw, without the drawing. Pure functions; any thread. Points are in the unit of
// `w` and `h`, with the origin at the top left and y downwards.

struct ChartPoint {
    double x = 0;
    double y = 0;

    bool operator==(const ChartPoint&) const = default;
};

/// Segments of a cooling curve.
inline constexpr std::size_t coolingCurveSegments = 64;

/// The floors (0 % at the bottom, 100 % at the top) that a profile asks for from `tMin` to `tMax` (°C), as a
/// polyline of one point more than there are segments, from left to right.
[[nodiscard]] std::vector<ChartPoint> coolingCurvePoints(CoolingProfile::Kind kind, double tMin, double tMax,
                                                         double w, double h);

/// What lies under that curve: on from its last point to the bottom right, the bottom left, and back to its
/// first point, which ends the path.
[[nodiscard]] std::vector<ChartPoint> coolingCurveArea(CoolingProfile::Kind kind, double tMin, double tMax,
                                                       double w, double h);

/// Where `temp` (°C) is on that curve. Beyond the range it is beyond the drawing: clip it.
[[nodiscard]] ChartPoint coolingCurveMarker(CoolingProfile::Kind kind, double temp, double tMin, double tMax,
                                            double w, double h);

/// A short history of finite values, oldest first, as a polyline over the whole width and the middle 76 % of
/// the height. The values' range counts as 1 when it is smaller, so that a flat series stays flat. None for
/// fewer than two values.
[[nodiscard]] std::vector<ChartPoint> sparklinePoints(std::span<const double> values, double w, double h);

/// What lies under that line, closed as the area of a cooling curve is. None for fewer than two values.
[[nodiscard]] std::vector<ChartPoint> sparklineArea(std::span<const double> values, double w, double h);

}  // namespace corvane
