#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>

#include <gtest/gtest.h>

#include "app/popover/popoverPosition.h"

namespace corvane {
namespace {

constexpr QSize panel(380, 600);
/// A screen with a bar of 24 at its top.
constexpr QRect screen(0, 24, 1920, 1056);

TEST(PopoverPosition, HangsCentredBelowAClickAtTheTop) {
    EXPECT_EQ(popoverPosition(panel, QPoint(1000, 20), screen), QPoint(810, 30));
}

TEST(PopoverPosition, StandsAboveAClickAtTheBottom) {
    constexpr QRect barBelow(0, 0, 1920, 1050);
    EXPECT_EQ(popoverPosition(panel, QPoint(1000, 1065), barBelow), QPoint(810, 444));
}

TEST(PopoverPosition, StaysOnTheScreenAtItsEdges) {
    EXPECT_EQ(popoverPosition(panel, QPoint(1910, 20), screen), QPoint(1534, 30));
    EXPECT_EQ(popoverPosition(panel, QPoint(3, 20), screen), QPoint(6, 30));
}

TEST(PopoverPosition, IsTheUpperRightCornerWhenNobodyKnowsOfAClick) {
    EXPECT_EQ(popoverPosition(panel, std::nullopt, screen), QPoint(1534, 30));
}

TEST(PopoverPosition, KeepsToTheScreenThatWasClicked) {
    constexpr QRect second(1920, 0, 1280, 1024);
    EXPECT_EQ(popoverPosition(panel, QPoint(3190, 5), second), QPoint(2814, 11));
}

TEST(PopoverPosition, BeginsAtTheUpperLeftWhenThePanelDoesNotFit) {
    constexpr QRect tiny(10, 20, 300, 400);
    EXPECT_EQ(popoverPosition(panel, QPoint(100, 30), tiny), QPoint(16, 26));
    EXPECT_EQ(popoverPosition(panel, QPoint(100, 410), tiny), QPoint(16, 26));
}

TEST(PopoverPosition, IsOnTheScreenWhateverTheTrayTells) {
    for (const QPoint told : {QPoint(-5000, -5000), QPoint(90000, 90000), QPoint(0, 0)}) {
        const QRect placed(popoverPosition(panel, told, screen), panel);
        EXPECT_TRUE(screen.contains(placed)) << told.x() << ' ' << told.y();
    }
}

}  // namespace
}  // namespace corvane
