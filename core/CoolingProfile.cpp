#include "core/CoolingProfile.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

using Point = CoolingProfile::Point;

constexpr std::array<Point, 4> silentPoints = {{{62, 0}, {72, 15}, {82, 35}, {92, 65}}};
constexpr std::array<Point, 4> balancedPoints = {{{52, 0}, {62, 25}, {75, 65}, {86, 100}}};
constexpr std::array<Point, 4> maxPoints = {{{40, 35}, {55, 60}, {68, 90}, {74, 100}}};

/// What an empty curve engages at: never, in any temperature that matters.
constexpr double neverEngageC = 100.0;

double interpolate(const Point& lower, const Point& upper, double tempC) {
    const double width = upper.temp - lower.temp;
    if (!(width > 0)) {
        return lower.percent;
    }
    return lower.percent + (upper.percent - lower.percent) * (tempC - lower.temp) / width;
}

/// Percent on the curve before clamping. NaN fails every comparison and comes out as the NaN it is.
double percentAt(std::span<const Point> points, double tempC) {
    if (tempC <= points.front().temp) {
        return points.front().percent;
    }
    if (tempC >= points.back().temp) {
        return points.back().percent;
    }
    const auto upper = std::find_if(points.begin() + 1, points.end(),
                                    [tempC](const Point& point) { return tempC <= point.temp; });
    return upper == points.end() ? std::nan("") : interpolate(*(upper - 1), *upper, tempC);
}

}  // namespace

std::string_view CoolingProfile::rawValue(Kind kind) {
    switch (kind) {
        case Kind::silent:
            return "silent";
        case Kind::balanced:
            return "balanced";
        case Kind::max:
            return "max";
    }
    return {};
}

std::optional<CoolingProfile::Kind> CoolingProfile::fromRawValue(std::string_view text) {
    const auto match =
        std::find_if(allKinds.begin(), allKinds.end(), [text](Kind kind) { return rawValue(kind) == text; });
    return match == allKinds.end() ? std::nullopt : std::optional(*match);
}

std::span<const Point> CoolingProfile::points(Kind kind) {
    switch (kind) {
        case Kind::silent:
            return silentPoints;
        case Kind::balanced:
            return balancedPoints;
        case Kind::max:
            return maxPoints;
    }
    return {};
}

double CoolingProfile::floorPercent(double tempC, Kind kind) {
    return CoolingCurve{points(kind)}.floorPercent(tempC);
}

double CoolingProfile::engageTempC(Kind kind) {
    return CoolingCurve{points(kind)}.engageTempC();
}

bool CoolingProfile::isAlwaysOn(Kind kind) {
    return CoolingCurve{points(kind)}.isAlwaysOn();
}

double CoolingCurve::floorPercent(double tempC) const {
    if (points.empty()) {
        return 0.0;
    }
    const double percent = std::min(percentAt(points, tempC), 100.0);
    return percent >= 0 ? percent : 0.0;
}

double CoolingCurve::engageTempC() const {
    if (isAlwaysOn()) {
        return 0.0;
    }
    const auto engaged =
        std::find_if(points.begin(), points.end(), [](const Point& point) { return point.percent > 0; });
    if (engaged != points.end()) {
        return engaged->temp;
    }
    return points.empty() ? neverEngageC : points.back().temp;
}

bool CoolingCurve::isAlwaysOn() const {
    return !points.empty() && points.front().percent > 0;
}

}  // namespace corvane
