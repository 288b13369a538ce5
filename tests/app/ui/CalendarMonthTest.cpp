#include <QDateTime>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/ui/CalendarMonth.h"

namespace corvane {
namespace {

QDateTime noon(int year, int month, int day) {
    return {QDate(year, month, day), QTime(12, 0)};
}

TEST(CalendarMonthTest, NamesItsWeekdaysFromTheFirstColumnOn) {
    CalendarMonth month;
    EXPECT_EQ(month.weekdays(), QStringList({"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"}));
    month.setGerman(true);
    EXPECT_EQ(month.weekdays().first(), "Mo");
    EXPECT_EQ(month.weekdays().last(), "So");
}

TEST(CalendarMonthTest, KnowsWhereItsDaysAre) {
    CalendarMonth month;
    month.setShown(noon(2028, 2, 20));  // a leap year; the 1st is a Tuesday
    EXPECT_EQ(month.length(), 29);
    EXPECT_EQ(month.leadingDays(), 2);
    month.setGerman(true);
    EXPECT_EQ(month.leadingDays(), 1);
}

TEST(CalendarMonthTest, StaysWhereItIsForAnInvalidTime) {
    CalendarMonth month;
    month.setShown(noon(2026, 5, 1));
    month.setShown(QDateTime());
    EXPECT_EQ(month.title(), "May 2026");
}

TEST(CalendarMonthTest, GoesBeyondTheYear) {
    CalendarMonth month;
    month.setShown(noon(2026, 12, 31));
    month.addMonths(1);
    EXPECT_EQ(month.title(), "January 2027");
    month.addMonths(-13);
    EXPECT_EQ(month.title(), "December 2025");
}

TEST(CalendarMonthTest, AnnouncesAChangeAndOnlyAChange) {
    CalendarMonth month;
    int changes = 0;
    QObject::connect(&month, &CalendarMonth::changed, [&changes] { ++changes; });
    month.setShown(noon(2026, 5, 1));
    month.setShown(noon(2026, 5, 31));
    month.setGerman(false);
    EXPECT_EQ(changes, 1);
    month.setGerman(true);
    EXPECT_EQ(changes, 2);
}

TEST(CalendarMonthTest, ComparesDaysAndNotTimes) {
    EXPECT_TRUE(CalendarMonth::isBefore(noon(2026, 5, 1), noon(2026, 5, 2)));
    EXPECT_FALSE(CalendarMonth::isBefore(noon(2026, 5, 1), noon(2026, 5, 1).addSecs(3600)));
    EXPECT_FALSE(CalendarMonth::isBefore(noon(2026, 5, 1), QDateTime()));
}

TEST(CalendarMonthTest, KeepsTheTimeOfDayWhenTheDayChanges) {
    CalendarMonth month;
    month.setShown(noon(2026, 2, 1));
    EXPECT_EQ(month.at(28, noon(2026, 1, 31)), noon(2026, 2, 28));
    EXPECT_EQ(CalendarMonth::shifted(noon(2026, 1, 31), 0, 1), noon(2026, 2, 28));
    EXPECT_EQ(CalendarMonth::shifted(noon(2026, 1, 31), 1, 0), noon(2026, 2, 1));
    EXPECT_EQ(CalendarMonth::withTime(noon(2026, 1, 31), 7, 30), QDateTime({2026, 1, 31}, {7, 30}));
}

}  // namespace
}  // namespace corvane
