#include <cmath>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/menu/ChartGeometry.h"

namespace corvane {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using Kind = CoolingProfile::Kind;
using Points = std::vector<ChartPoint>;

constexpr double width = 320;
constexpr double height = 70;
constexpr double tMin = 35;
constexpr double tMax = 95;

void expectNear(const ChartPoint& point, double x, double y) {
    EXPECT_NEAR(point.x, x, 1e-9);
    EXPECT_NEAR(point.y, y, 1e-9);
}

Points curve(Kind kind) {
    return coolingCurvePoints(kind, tMin, tMax, width, height);
}

// The cooling curve

TEST(CoolingCurveGeometry, HasAPointForEachEndOfSixtyFourSegments) {
    for (const Kind kind : CoolingProfile::allKinds) {
        EXPECT_THAT(curve(kind), SizeIs(65));
    }
}

TEST(CoolingCurveGeometry, HasEachPointAtItsTemperaturesFloor) {
    for (const Kind kind : CoolingProfile::allKinds) {
        const Points points = curve(kind);
        for (std::size_t i = 0; i < points.size(); ++i) {
            const double temp = 35 + 60.0 * static_cast<double>(i) / 64;
            const double percent = CoolingProfile::floorPercent(temp, kind);
            expectNear(points[i], static_cast<double>(i) * 5, 70 - 0.7 * percent);
        }
    }
}

TEST(CoolingCurveGeometry, LiesAtTheBottomWhereNothingIsAskedForAndAtTheTopWhereAllIs) {
    const Points points = curve(Kind::silent);
    expectNear(points.front(), 0, 70);
    const Points hot = coolingCurvePoints(Kind::max, 90, 110, width, height);
    expectNear(hot.back(), 320, 0);
}

TEST(CoolingCurveGeometry, ClosesItsAreaOverTheBottomCorners) {
    const Points points = curve(Kind::balanced);
    const Points area = coolingCurveArea(Kind::balanced, tMin, tMax, width, height);
    ASSERT_THAT(area, SizeIs(68));
    EXPECT_EQ(Points(area.begin(), area.begin() + 65), points);
    EXPECT_EQ(area[65], (ChartPoint{320, 70}));
    EXPECT_EQ(area[66], (ChartPoint{0, 70}));
    EXPECT_EQ(area[67], points.front());
}

TEST(CoolingCurveGeometry, MarksATemperatureOnTheCurve) {
    const Points points = curve(Kind::balanced);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double temp = 35 + 60.0 * static_cast<double>(i) / 64;
        const ChartPoint marker = coolingCurveMarker(Kind::balanced, temp, tMin, tMax, width, height);
        expectNear(marker, points[i].x, points[i].y);
    }
}

TEST(CoolingCurveGeometry, MarksATemperatureBeyondTheRangeBeyondTheDrawing) {
    EXPECT_LT(coolingCurveMarker(Kind::balanced, 20, tMin, tMax, width, height).x, 0);
    const ChartPoint hot = coolingCurveMarker(Kind::balanced, 101, tMin, tMax, width, height);
    EXPECT_NEAR(hot.x, 352, 1e-9);
    EXPECT_GE(hot.y, 0);
}

// The sparkline

TEST(SparklineGeometry, HasNothingToDrawForFewerThanTwoValues) {
    EXPECT_THAT(sparklinePoints({}, width, height), IsEmpty());
    EXPECT_THAT(sparklinePoints(std::vector{64.0}, width, height), IsEmpty());
    EXPECT_THAT(sparklineArea(std::vector{64.0}, width, height), IsEmpty());
}

TEST(SparklineGeometry, DrawsEqualValuesAsAFlatLineAtTheBottomOfTheBand) {
    const Points points = sparklinePoints(std::vector{64.0, 64.0}, width, height);
    ASSERT_THAT(points, SizeIs(2));
    expectNear(points[0], 0, 0.88 * height);
    expectNear(points[1], width, 0.88 * height);
}

TEST(SparklineGeometry, CountsARangeBelowOneAsOne) {
    const Points points = sparklinePoints(std::vector{50.0, 50.5}, width, height);
    ASSERT_THAT(points, SizeIs(2));
    expectNear(points[0], 0, 0.88 * height);
    expectNear(points[1], width, (1 - (0.5 * 0.76 + 0.12)) * height);
}

TEST(SparklineGeometry, StretchesAWiderRangeOverTheMiddleOfTheHeight) {
    const Points points = sparklinePoints(std::vector{40.0, 60.0, 50.0, 45.0, 40.0}, 100, 100);
    ASSERT_THAT(points, SizeIs(5));
    expectNear(points[0], 0, 88);
    expectNear(points[1], 25, 12);
    expectNear(points[2], 50, 50);
    expectNear(points[3], 75, 69);
    expectNear(points[4], 100, 88);
}

TEST(SparklineGeometry, ClosesItsAreaOverTheBottomCorners) {
    const std::vector values{40.0, 60.0, 50.0};
    const Points line = sparklinePoints(values, width, height);
    const Points area = sparklineArea(values, width, height);
    ASSERT_THAT(area, SizeIs(6));
    EXPECT_EQ(Points(area.begin(), area.begin() + 3), line);
    EXPECT_EQ(area[3], (ChartPoint{width, height}));
    EXPECT_EQ(area[4], (ChartPoint{0, height}));
    EXPECT_EQ(area[5], line.front());
}

}  // namespace
}  // namespace corvane
