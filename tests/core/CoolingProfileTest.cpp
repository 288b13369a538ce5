#include <limits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "core/CoolingProfile.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;
using Point = CoolingProfile::Point;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(CoolingProfile, ListsItsKindsInOrderOfStrengthUnderTheirRawValues) {
    std::vector<std::string_view> values;
    for (const Kind kind : CoolingProfile::allKinds) {
        values.push_back(CoolingProfile::rawValue(kind));
    }
    EXPECT_EQ(values, (std::vector<std::string_view>{"silent", "balanced", "max"}));
    EXPECT_LT(Kind::silent, Kind::balanced);
    EXPECT_LT(Kind::balanced, Kind::max);
}

TEST(CoolingProfile, ReadsBackExactlyItsRawValues) {
    for (const Kind kind : CoolingProfile::allKinds) {
        EXPECT_EQ(CoolingProfile::fromRawValue(CoolingProfile::rawValue(kind)), kind);
    }
    for (const char* text : {"Silent", "MAX", "", "balanced "}) {
        EXPECT_FALSE(CoolingProfile::fromRawValue(text)) << text;
    }
}

TEST(CoolingProfile, RisesThroughTheseCorners) {
    struct Curve {
        Kind kind;
        std::vector<std::pair<double, double>> corners;
    };
    for (const Curve& curve : {Curve{Kind::silent, {{62, 0}, {72, 15}, {82, 35}, {92, 65}}},
                               Curve{Kind::balanced, {{52, 0}, {62, 25}, {75, 65}, {86, 100}}},
                               Curve{Kind::max, {{40, 35}, {55, 60}, {68, 90}, {74, 100}}}}) {
        std::vector<std::pair<double, double>> corners;
        for (const Point& point : CoolingProfile::points(curve.kind)) {
            corners.emplace_back(point.temp, point.percent);
        }
        EXPECT_EQ(corners, curve.corners) << CoolingProfile::rawValue(curve.kind);
    }
}

TEST(CoolingProfile, HoldsTheFirstAndLastPercentOutsideItsCurve) {
    EXPECT_EQ(CoolingProfile::floorPercent(30, Kind::max), 35.0);
    EXPECT_EQ(CoolingProfile::floorPercent(100, Kind::max), 100.0);
    EXPECT_EQ(CoolingProfile::floorPercent(60, Kind::silent), 0.0);
    EXPECT_EQ(CoolingProfile::floorPercent(120, Kind::silent), 65.0);
}

TEST(CoolingProfile, InterpolatesBetweenItsCorners) {
    EXPECT_EQ(CoolingProfile::floorPercent(67, Kind::silent), 7.5);
    EXPECT_EQ(CoolingProfile::floorPercent(80.5, Kind::balanced), 82.5);
    EXPECT_EQ(CoolingProfile::floorPercent(47.5, Kind::max), 47.5);
}

TEST(CoolingProfile, GivesACornersOwnPercentExactlyAtIt) {
    for (const Kind kind : CoolingProfile::allKinds) {
        for (const Point& point : CoolingProfile::points(kind)) {
            EXPECT_EQ(CoolingProfile::floorPercent(point.temp, kind), point.percent)
                << CoolingProfile::rawValue(kind) << " at " << point.temp;
        }
    }
    EXPECT_EQ(CoolingProfile::floorPercent(62, Kind::balanced), 25.0);
}

TEST(CoolingProfile, AsksForNothingWhenTheTemperatureIsNotANumber) {
    for (const Kind kind : CoolingProfile::allKinds) {
        EXPECT_EQ(CoolingProfile::floorPercent(nan, kind), 0.0);
    }
}

TEST(CoolingProfile, EngagesAtTheFirstTemperatureThatAsksForFan) {
    EXPECT_EQ(CoolingProfile::engageTempC(Kind::silent), 72.0);
    EXPECT_EQ(CoolingProfile::engageTempC(Kind::balanced), 62.0);
    EXPECT_EQ(CoolingProfile::engageTempC(Kind::max), 0.0);
}

TEST(CoolingProfile, IsAlwaysOnOnlyAtMax) {
    EXPECT_FALSE(CoolingProfile::isAlwaysOn(Kind::silent));
    EXPECT_FALSE(CoolingProfile::isAlwaysOn(Kind::balanced));
    EXPECT_TRUE(CoolingProfile::isAlwaysOn(Kind::max));
}

TEST(CoolingCurve, AsksForNothingWithoutCorners) {
    const CoolingCurve empty{};
    EXPECT_EQ(empty.floorPercent(80), 0.0);
    EXPECT_EQ(empty.engageTempC(), 100.0);
    EXPECT_FALSE(empty.isAlwaysOn());
}

TEST(CoolingCurve, EngagesAtItsLastTemperatureWhenItNeverAsksForFan) {
    const std::vector<Point> points = {{40, 0}, {60, 0}};
    EXPECT_EQ(CoolingCurve{points}.engageTempC(), 60.0);
}

TEST(CoolingCurve, TakesTheLowerCornerWhereTwoShareATemperature) {
    const std::vector<Point> points = {{40, 10}, {50, 20}, {50, 80}, {60, 90}};
    EXPECT_EQ(CoolingCurve{points}.floorPercent(50), 20.0);
    EXPECT_EQ(CoolingCurve{points}.floorPercent(55), 85.0);
}

TEST(CoolingCurve, ClampsPercentagesToTheRangeOfAFan) {
    const std::vector<Point> points = {{40, -20}, {60, 140}, {70, nan}};
    const CoolingCurve curve{points};
    EXPECT_EQ(curve.floorPercent(30), 0.0);
    EXPECT_EQ(curve.floorPercent(60), 100.0);
    EXPECT_EQ(curve.floorPercent(80), 0.0);
}

}  // namespace
}  // namespace corvane
