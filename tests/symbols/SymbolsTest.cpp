#include <QImage>
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "symbols/Symbols.h"

namespace corvane {
namespace {

const std::vector<std::string> names = {
    "app.fill",
    "arrow.down.app",
    "arrow.down.circle.fill",
    "arrow.triangle.2.circlepath",
    "battery.0",
    "battery.100",
    "battery.100.bolt",
    "battery.25",
    "battery.50",
    "battery.75",
    "bolt.slash.fill",
    "calendar.badge.clock",
    "checkmark",
    "checkmark.circle.fill",
    "checkmark.shield.fill",
    "chevron.down",
    "chevron.left",
    "chevron.right",
    "chevron.up",
    "circle",
    "desktopcomputer",
    "display",
    "envelope",
    "exclamationmark.triangle.fill",
    "externaldrive.badge.xmark",
    "externaldrive.fill",
    "fan.fill",
    "flame.fill",
    "gauge.with.dots.needle.bottom.100percent",
    "gauge.with.dots.needle.bottom.50percent",
    "gearshape",
    "minus.circle.fill",
    "moon.zzz",
    "network",
    "plus.circle",
    "power",
    "power.circle.fill",
    "questionmark.circle",
    "stop.circle",
    "thermometer.medium",
    "trash",
    "xmark",
};

QImage canvas(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The symbol as large as fits.
QImage drawn(const std::string& name, int width = 48, int height = 48, const QColor& color = Qt::black) {
    QImage image = canvas(width, height);
    QPainter painter(&image);
    drawSymbol(painter, QString::fromStdString(name), QRectF(0, 0, width, height), color);
    return image;
}

/// How much of the image is covered, 0...1.
double coverage(const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            sum += qAlpha(image.pixel(x, y)) / 255.0;
        }
    }
    return sum / image.width() / image.height();
}

/// The largest opacity outside of `box`.
int opacityOutside(const QImage& image, const QRect& box) {
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            most = box.contains(x, y) ? most : std::max(most, qAlpha(image.pixel(x, y)));
        }
    }
    return most;
}

class EverySymbol : public testing::TestWithParam<std::string> {};

TEST_P(EverySymbol, IsThere) {
    EXPECT_TRUE(hasSymbol(QString::fromStdString(GetParam())));
}

TEST_P(EverySymbol, DrawsSomethingButNotEverything) {
    const double covered = coverage(drawn(GetParam()));
    EXPECT_GT(covered, 0.05);
    EXPECT_LT(covered, 0.9);
}

TEST_P(EverySymbol, KeepsClearOfTheEdgesOfItsSquare) {
    EXPECT_EQ(opacityOutside(drawn(GetParam()), QRect(1, 1, 46, 46)), 0);
}

TEST_P(EverySymbol, IsDrawnInNoColorButTheOneAskedFor) {
    const QImage image = drawn(GetParam(), 24, 24, QColor(255, 0, 0)).convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) > 32) {
                ASSERT_GE(qRed(pixel), 248) << x << "," << y;
            }
            ASSERT_EQ(qGreen(pixel), 0) << x << "," << y;
            ASSERT_EQ(qBlue(pixel), 0) << x << "," << y;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Symbols, EverySymbol, testing::ValuesIn(names), [](const auto& instance) {
    std::string name = instance.param;
    std::ranges::replace(name, '.', '_');
    return name;
});

TEST(Symbols, HaveNoDrawingForAnUnknownName) {
    EXPECT_FALSE(hasSymbol("no.such.symbol"));
    EXPECT_FALSE(hasSymbol(""));
    EXPECT_EQ(coverage(drawn("no.such.symbol")), 0);
}

TEST(Symbols, AreFadedByAFaintColor) {
    const double full = coverage(drawn("app.fill"));
    const double half = coverage(drawn("app.fill", 48, 48, QColor(0, 0, 0, 128)));
    EXPECT_NEAR(half, full / 2, 0.01);
}

TEST(Symbols, CutOutWhatLiesOnAFilledShape) {
    EXPECT_EQ(qAlpha(drawn("minus.circle.fill", 96, 96).pixel(48, 48)), 0);
    EXPECT_EQ(qAlpha(drawn("minus.circle.fill", 96, 96).pixel(48, 30)), 255);
}

TEST(Symbols, AreTheLargestSquareInTheMiddleOfTheirBox) {
    const QImage image = drawn("app.fill", 100, 40);
    EXPECT_EQ(opacityOutside(image, QRect(30, 0, 40, 40)), 0);
    EXPECT_EQ(qAlpha(image.pixel(50, 20)), 255);
}

TEST(Symbols, AreDrawnForThePixelsTheyEndUpOn) {
    QImage scaled = canvas(96, 96);
    scaled.setDevicePixelRatio(2);
    QPainter painter(&scaled);
    drawSymbol(painter, "gearshape", QRectF(0, 0, 48, 48), Qt::black);
    painter.end();
    scaled.setDevicePixelRatio(1);

    EXPECT_EQ(scaled, drawn("gearshape", 96, 96));
}

TEST(Symbols, DifferBetweenTheLevelsOfABattery) {
    double former = 0;
    for (const char* name : {"battery.0", "battery.25", "battery.50", "battery.75", "battery.100"}) {
        const double covered = coverage(drawn(name));
        EXPECT_GT(covered, former + 0.01) << name;
        former = covered;
    }
}

TEST(Symbols, DrawNothingInAnEmptyBox) {
    QImage image = canvas(10, 10);
    QPainter painter(&image);
    drawSymbol(painter, "app.fill", QRectF(2, 2, 0, 5), Qt::black);
    painter.end();
    EXPECT_EQ(coverage(image), 0);
}

}  // namespace
}  // namespace corvane
