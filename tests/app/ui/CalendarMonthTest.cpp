#include <QDateTime>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/ui/CalendarMonth.h"

namespace corvane {
namespace {

QDateTime noon(int year, int month, int day) {
    return {QDate(year, month, day), QTime(12, 0)};
}

class CalendarMonthTest : public testing::Test {
protected:
    CalendarMonthTest() { month.setSelected(noon(2028, 2, 20)); }  // a leap year; the 1st is a Tuesday

    CalendarMonth month;
};

TEST_F(CalendarMonthTest, NamesItsWeekdaysFromTheFirstColumnOn) {
    EXPECT_EQ(month.weekdays(), QStringList({"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"}));
    month.setGerman(true);
    EXPECT_EQ(month.weekdays().first(), "Mo");
    EXPECT_EQ(month.weekdays().last(), "So");
}

TEST_F(CalendarMonthTest, KnowsItsDaysAndWhereTheyAre) {
    EXPECT_EQ(month.days().size(), 29);
    EXPECT_EQ(month.days().last(), "Tuesday, February 29, 2028");
    EXPECT_EQ(month.leadingDays(), 2);
    month.setGerman(true);
    EXPECT_EQ(month.days().last(), "Dienstag, 29. Februar 2028");
    EXPECT_EQ(month.leadingDays(), 1);
}

TEST_F(CalendarMonthTest, KnowsTheSelectedDayWhileItsMonthIsShown) {
    EXPECT_EQ(month.selectedDay(), 20);
    month.showLater(12);
    EXPECT_EQ(month.selectedDay(), 0);
}

TEST_F(CalendarMonthTest, StaysWhereItIsForAnInvalidTime) {
    month.setSelected(QDateTime());
    EXPECT_EQ(month.title(), "February 2028");
    EXPECT_EQ(month.selectedDay(), 20);
}

TEST_F(CalendarMonthTest, GoesBeyondTheYear) {
    month.showLater(11);
    EXPECT_EQ(month.title(), "January 2029");
    month.showLater(-13);
    EXPECT_EQ(month.title(), "December 2027");
}

TEST_F(CalendarMonthTest, AnnouncesAChangeAndOnlyAChange) {
    int changes = 0;
    QObject::connect(&month, &CalendarMonth::changed, [&changes] { ++changes; });
    month.setSelected(noon(2028, 2, 20));
    month.setGerman(false);
    month.showLater(0);
    EXPECT_EQ(changes, 0);
    month.setSelected(noon(2028, 2, 21));
    month.setGerman(true);
    month.showLater(1);
    EXPECT_EQ(changes, 3);
}

TEST_F(CalendarMonthTest, OffersOtherTimesThanTheSelectedOne) {
    EXPECT_EQ(month.onDay(28), noon(2028, 2, 28));
    EXPECT_EQ(month.later(10, 0), noon(2028, 3, 1));
    EXPECT_EQ(month.later(0, 1), noon(2028, 3, 20));
    EXPECT_EQ(month.atTime(7, 30), QDateTime({2028, 2, 20}, {7, 30}));
    month.setSelected(noon(2028, 1, 31));
    EXPECT_EQ(month.later(0, 1), noon(2028, 2, 29));
}

}  // namespace
}  // namespace corvane
