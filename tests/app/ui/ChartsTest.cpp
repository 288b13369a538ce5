#include <QColor>
#include <QImage>
#include <algorithm>

#include "tests/app/ui/ControlTest.h"

namespace corvane {
namespace {

class ChartsTest : public ControlTest {
protected:
    static bool isRed(const QColor& color) { return color.red() > 150 && color.green() < 110; }
    /// Rows of the column that are drawn in red, none for -1.
    static int firstRed(const QImage& image, int x, int height) {
        for (int y = 0; y < height; ++y) {
            if (isRed(image.pixelColor(x, y))) {
                return y;
            }
        }
        return -1;
    }
    static int redPixels(const QImage& image) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                count += isRed(image.pixelColor(x, y)) ? 1 : 0;
            }
        }
        return count;
    }
    /// How much ink there is in one column of an image that is black on white, in rows of full black.
    static double ink(const QImage& image, int x, int fromRow, int toRow) {
        double ink = 0;
        for (int y = fromRow; y < toRow; ++y) {
            ink += 1 - image.pixelColor(x, y).red() / 255.0;
        }
        return ink;
    }
    void loadBlack(const std::string& chart) {
        load("Rectangle { anchors.fill: parent; color: 'white' } " + chart);
    }
    void loadBlackCurve(const std::string& more) {
        loadBlack(
            "CoolingCurveView { width: 308; height: 78; color: 'black'; primaryColor: 'black'; tMin: 35;"
            " tMax: 95; " +
            more + " }");
    }
    void loadCurve(const std::string& more) {
        load("CoolingCurveView { width: 308; height: 78; color: '#d00000'; tMin: 35; tMax: 95;" + more +
             " }");
    }
};

TEST_F(ChartsTest, ACoolingCurveClimbsToTheRight) {
    loadCurve("kind: 'balanced'");
    const QImage image = picture();
    const int left = firstRed(image, 10, 78);
    const int middle = firstRed(image, 180, 78);
    const int right = firstRed(image, 300, 78);
    ASSERT_GE(right, 0);
    EXPECT_GT(left, middle);
    EXPECT_GT(middle, right);
    EXPECT_NEAR(right, 4, 2);  // full speed, just below the top
}

TEST_F(ChartsTest, ACoolingCurveMarksTheTemperature) {
    loadCurve("kind: 'silent'");
    const QImage without = picture();
    loadCurve("kind: 'silent'; currentTemp: 65");
    const QImage with = picture();
    EXPECT_NE(without.pixel(154, 10), with.pixel(154, 10));  // the line, in the middle of 35 to 95
    EXPECT_EQ(without.pixel(100, 10), with.pixel(100, 10));
    EXPECT_GT(redPixels(with), redPixels(without) + 10);  // the dot
}

TEST_F(ChartsTest, ATemperatureBeyondTheRangeIsNotMarked) {
    loadCurve("kind: 'max'");
    const QImage without = picture();
    for (const char* temp : {"28", "102", "1e300", "-Infinity", "NaN"}) {
        loadCurve(std::string("kind: 'max'; currentTemp: ") + temp);
        EXPECT_EQ(without, picture()) << temp;
    }
    for (const char* temp : {"35", "95"}) {
        loadCurve(std::string("kind: 'max'; currentTemp: ") + temp);
        EXPECT_NE(without, picture()) << temp;
    }
}

TEST_F(ChartsTest, ACoolingCurveHasAFaintDashedGuideInTheMiddle) {
    loadBlackCurve("kind: 'silent'");
    const QImage image = picture();
    double least = 1;
    double most = 0;
    for (int x = 6; x < 40; ++x) {
        least = std::min(least, ink(image, x, 34, 44));
        most = std::max(most, ink(image, x, 34, 44));
    }
    EXPECT_NEAR(most, 0.1, 0.015);
    EXPECT_NEAR(least, 0, 0.015) << "between the dashes";
}

TEST_F(ChartsTest, ACoolingCurveStandsOnAnAreaThatFadesDownwards) {
    loadBlackCurve("kind: 'max'");
    const QImage image = picture();
    EXPECT_NEAR(ink(image, 300, 10, 11), 0.2 - 0.18 * 6.5 / 70, 0.01);
    EXPECT_NEAR(ink(image, 300, 72, 73), 0.2 - 0.18 * 68.5 / 70, 0.01);
    // The line at the top, and five rows of the area, of which the line covers a part.
    EXPECT_NEAR(ink(image, 300, 0, 9), 1.8 + 4.1 * 0.193, 0.1);
}

TEST_F(ChartsTest, ACoolingCurveMarksTheTemperatureFaintly) {
    loadBlackCurve("kind: 'silent'");
    const QImage without = picture();
    loadBlackCurve("kind: 'silent'; currentTemp: 65");
    const QImage with = picture();
    double marked = 0;
    for (int x = 148; x < 160; ++x) {
        marked += ink(with, x, 10, 11) - ink(without, x, 10, 11);
    }
    EXPECT_NEAR(marked, 0.18, 0.02);
}

TEST_F(ChartsTest, NothingIsDrawnForAnUnknownProfile) {
    loadCurve("kind: 'turbo'; currentTemp: 60");
    EXPECT_EQ(redPixels(picture()), 0);
}

TEST_F(ChartsTest, ACoolingCurveFollowsItsProfile) {
    loadCurve("kind: test.state1 === undefined ? 'max' : test.state1");
    setProperty("state1", "silent");
    const QImage silent = picture();
    setProperty("state1", "max");
    EXPECT_NE(picture(), silent);
}

TEST_F(ChartsTest, TwoEqualValuesAreAFlatLineNearTheBottom) {
    load("Sparkline { width: 100; height: 100; color: '#d00000'; values: [50, 50] }");
    const QImage image = picture();
    for (const int x : {5, 50, 95}) {
        EXPECT_NEAR(firstRed(image, x, 100), 88, 1);
    }
}

TEST_F(ChartsTest, OneValueDrawsNothing) {
    load("Sparkline { width: 100; height: 100; color: '#d00000'; values: [50] }");
    EXPECT_EQ(redPixels(picture()), 0);
}

TEST_F(ChartsTest, ASparklineUsesTheMiddleOfItsHeight) {
    load("Sparkline { width: 100; height: 100; color: '#d00000'; values: [40, 60, 40] }");
    const QImage image = picture();
    EXPECT_NEAR(firstRed(image, 50, 100), 12, 2);
    EXPECT_NEAR(firstRed(image, 1, 100), 86, 3);
}

TEST_F(ChartsTest, ASparklineStandsOnAnAreaThatFadesDownwards) {
    loadBlack("Sparkline { width: 100; height: 100; color: 'black'; values: [40, 60, 60, 40] }");
    const QImage image = picture();
    EXPECT_NEAR(ink(image, 50, 20, 21), 0.28 - 0.26 * 0.205, 0.01);
    EXPECT_NEAR(ink(image, 50, 95, 96), 0.28 - 0.26 * 0.955, 0.01);
    // The line at 12, and four rows of the area, of which the line covers a part.
    EXPECT_NEAR(ink(image, 50, 5, 16), 1.5 + 3.25 * 0.245, 0.1);
}

TEST_F(ChartsTest, ABadgeWithoutALabelIsNotThere) {
    load(
        "ThrottleBadge { objectName: 'badge'; label: test.state1 === undefined ? '' : test.state1; role: "
        "'orange' }");
    EXPECT_FALSE(isShown("badge"));
    setProperty("state1", "Throttling");
    EXPECT_TRUE(isShown("badge"));
    EXPECT_EQ(accessibleName("badge"), "Throttling");
}

TEST_F(ChartsTest, ASymbolIsDrawnInItsColorAndFollowsItsName) {
    load(
        "Symbol { name: test.state1 === undefined ? 'app.fill' : test.state1; color: '#d00000'; width: 24; "
        "height: 24 }");
    EXPECT_GT(redPixels(picture()), 300);
    setProperty("state1", "no.such.symbol");
    EXPECT_EQ(redPixels(picture()), 0);
}

}  // namespace
}  // namespace corvane
