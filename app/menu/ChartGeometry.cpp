#include "app/menu/ChartGeometry.h"

#include <algorithm>

namespace corvane {

namespace {

/// The part of the height that a sparkline uses, and the margin under it.
constexpr double sparklineBand = 0.76;
constexpr double sparklineMargin = 0.12;

double yOfFloor(CoolingProfile::Kind kind, double temp, double h) {
    return h * (1 - CoolingProfile::floorPercent(temp, kind) / 100);
}

std::vector<ChartPoint> areaUnder(std::vector<ChartPoint> line, double w, double h) {
    if (line.empty()) {
        return line;
    }
    const ChartPoint first = line.front();
    line.insert(line.end(), {{w, h}, {0, h}, first});
    return line;
}

}  // namespace

std::vector<ChartPoint> coolingCurvePoints(CoolingProfile::Kind kind, double tMin, double tMax, double w,
                                           double h) {
    std::vector<ChartPoint> points;
    points.reserve(coolingCurveSegments + 1);
    for (std::size_t i = 0; i <= coolingCurveSegments; ++i) {
        const double part = static_cast<double>(i) / coolingCurveSegments;
        points.push_back({w * part, yOfFloor(kind, tMin + (tMax - tMin) * part, h)});
    }
    return points;
}

std::vector<ChartPoint> coolingCurveArea(CoolingProfile::Kind kind, double tMin, double tMax, double w,
                                         double h) {
    return areaUnder(coolingCurvePoints(kind, tMin, tMax, w, h), w, h);
}

ChartPoint coolingCurveMarker(CoolingProfile::Kind kind, double temp, double tMin, double tMax, double w,
                              double h) {
    return {w * (temp - tMin) / (tMax - tMin), yOfFloor(kind, temp, h)};
}

std::vector<ChartPoint> sparklinePoints(std::span<const double> values, double w, double h) {
    if (values.size() < 2) {
        return {};
    }
    const auto [lo, hi] = std::ranges::minmax(values);
    const double range = std::max(hi - lo, 1.0);
    const double last = static_cast<double>(values.size() - 1);
    std::vector<ChartPoint> points;
    points.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double part = (values[i] - lo) / range;
        points.push_back(
            {w * static_cast<double>(i) / last, h * (1 - (part * sparklineBand + sparklineMargin))});
    }
    return points;
}

std::vector<ChartPoint> sparklineArea(std::span<const double> values, double w, double h) {
    return areaUnder(sparklinePoints(values, w, h), w, h);
}

}  // namespace corvane
