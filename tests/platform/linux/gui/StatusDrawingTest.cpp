#include <algorithm>

#include <gmock/gmock.h>

#include "platform/linux/gui/StatusDrawing.h"
#include "tests/platform/linux/gui/GuiLoop.h"

namespace corvane {
namespace {

using testing::ElementsAre;

/// Pixels that show something, in this part of the image.
int inkIn(const QImage& image, const QRect& part) {
    int ink = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            ink += qAlpha(image.pixel(x, y)) > 64 ? 1 : 0;
        }
    }
    return ink;
}

int inkIn(const QImage& image) {
    return inkIn(image, image.rect());
}

class StatusDrawingTest : public testing::Test {
protected:
    static StatusDrawing drawing(const QString& title = {}, const QColor& color = Qt::white) {
        return {.image = StatusImage::gauge50, .title = title, .color = color};
    }

    GuiLoop loop;
};

TEST_F(StatusDrawingTest, FillsASquareWithTheGauge) {
    for (const int edge : {16, 22, 24, 32, 48}) {
        const QImage image = drawing().paint({edge, edge});
        EXPECT_EQ(image.size(), QSize(edge, edge));
        EXPECT_GT(inkIn(image), edge * edge / 10) << edge;
        EXPECT_LT(inkIn(image), edge * edge * 3 / 4) << edge;
        EXPECT_GT(inkIn(image, {0, 0, edge / 4, edge}), 0) << edge;
        EXPECT_GT(inkIn(image, {edge - edge / 4, 0, edge / 4, edge}), 0) << edge;
    }
}

TEST_F(StatusDrawingTest, TellsItsTwoGaugesApartAtEverySize) {
    StatusDrawing active = drawing();
    active.image = StatusImage::gauge100;
    for (const int edge : {16, 22, 24, 32, 48}) {
        EXPECT_NE(active.paint({edge, edge}), drawing().paint({edge, edge})) << edge;
    }
}

TEST_F(StatusDrawingTest, HasOneColourOnly) {
    const QColor color(0x23, 0x26, 0x29);
    const QImage image = drawing("64°", color).paint({80, 32}).convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() > 128) {
                ASSERT_NEAR(pixel.red(), color.red(), 3) << x << ' ' << y;
                ASSERT_NEAR(pixel.green(), color.green(), 3) << x << ' ' << y;
                ASSERT_NEAR(pixel.blue(), color.blue(), 3) << x << ' ' << y;
            }
        }
    }
    EXPECT_GT(inkIn(image), 0);
}

TEST_F(StatusDrawingTest, FillsTheSquareInTheMiddleOfWhateverItIsGiven) {
    const QImage square = drawing("64°").paint({24, 24});
    EXPECT_EQ(drawing("64°").paint({100, 24}).copy(38, 0, 24, 24), square);
    EXPECT_EQ(drawing("64°").paint({24, 100}).copy(0, 38, 24, 24), square);
    EXPECT_EQ(inkIn(drawing("64°").paint({100, 24})), inkIn(square));
}

TEST_F(StatusDrawingTest, PutsTheTitleBelowTheGauge) {
    for (const char* title : {"5°", "64°", "100°"}) {
        const QImage image = drawing(title).paint({24, 24});
        EXPECT_GT(inkIn(image, {0, 0, 24, 10}), 10) << title;
        EXPECT_GT(inkIn(image, {0, 15, 24, 9}), 10) << title;
    }
}

TEST_F(StatusDrawingTest, ShrinksAVeryLongTitleToItsWidth) {
    const QImage image = drawing(QString(40, 'W')).paint({48, 48});
    EXPECT_EQ(image.size(), QSize(48, 48));
    EXPECT_GT(inkIn(image, {0, 0, 48, 24}), 10) << "the gauge is still there";
}

TEST_F(StatusDrawingTest, SurvivesSizesThatShowNothing) {
    for (const QSize size : {QSize(1, 1), QSize(1, 24), QSize(24, 1), QSize(2, 2)}) {
        EXPECT_EQ(drawing("64°").paint(size).size(), size);
        EXPECT_EQ(drawing().paint(size).size(), size);
    }
}

TEST_F(StatusDrawingTest, GivesHostsASquareOfEachSize) {
    std::vector<std::pair<int, int>> sizes;
    for (const NotifierPixmap& pixmap : drawing().pixmaps()) {
        sizes.emplace_back(pixmap.width, pixmap.height);
        EXPECT_EQ(pixmap.argb.size(), static_cast<std::size_t>(pixmap.width * pixmap.height * 4));
    }
    EXPECT_THAT(sizes, ElementsAre(std::pair(16, 16), std::pair(22, 22), std::pair(24, 24), std::pair(32, 32),
                                   std::pair(48, 48)));
}

TEST_F(StatusDrawingTest, GivesHostsAlphaRedGreenAndBlueInThisOrder) {
    const NotifierPixmap pixmap = drawing("", QColor(200, 100, 50)).pixmaps().back();
    int opaque = 0;
    for (std::size_t i = 0; i < pixmap.argb.size(); i += 4) {
        if (pixmap.argb[i] == 255) {
            ++opaque;
            ASSERT_EQ(pixmap.argb[i + 1], 200);
            ASSERT_EQ(pixmap.argb[i + 2], 100);
            ASSERT_EQ(pixmap.argb[i + 3], 50);
        }
    }
    EXPECT_GT(opaque, 50);
    EXPECT_EQ(pixmap.argb[0], 0) << "the corner is clear";
}

}  // namespace
}  // namespace corvane
