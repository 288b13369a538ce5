#include <ctime>
#include <string>

#include <gtest/gtest.h>

#include "app/shell/RelativeDate.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"
#include "tests/support/EnvironmentVariable.h"

namespace corvane {
namespace {

/// In Berlin, where clocks go forward on 2026-03-29 at 2:00 and back on 2026-10-25 at 3:00.
class RelativeDateTest : public testing::Test {
protected:
    RelativeDateTest() { tzset(); }
    RelativeDateTest(const RelativeDateTest&) = delete;
    RelativeDateTest& operator=(const RelativeDateTest&) = delete;
    ~RelativeDateTest() override { tzset(); }

    /// `utc` like "2026-11-21 17:30:00".
    static WallTime at(const char* utc) {
        std::tm parts{};
        EXPECT_NE(strptime(utc, "%Y-%m-%d %H:%M:%S", &parts), nullptr) << utc;
        return std::chrono::system_clock::from_time_t(timegm(&parts));
    }
    std::string english(const char* date, const char* now) {
        locale.prefer({"en-GB"});
        return RelativeDate::text(at(date), at(now), lang).toStdString();
    }
    std::string german(const char* date, const char* now) {
        locale.prefer({"de-CH"});
        return RelativeDate::text(at(date), at(now), lang).toStdString();
    }

    EnvironmentVariable zone{"TZ", "CET-1CEST,M3.5.0,M10.5.0/3"};
    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
};

TEST_F(RelativeDateTest, NamesTheDaysAroundThePresentOne) {
    const char* now = "2026-11-21 11:00:00";
    EXPECT_EQ(german("2026-11-21 17:30:00", now), "Heute, 18:30");
    EXPECT_EQ(english("2026-11-21 17:30:00", now), "Today, 6:30 PM");
    EXPECT_EQ(german("2026-11-22 05:15:00", now), "Morgen, 06:15");
    EXPECT_EQ(english("2026-11-22 05:15:00", now), "Tomorrow, 6:15 AM");
    EXPECT_EQ(german("2026-11-20 05:15:00", now), "Gestern, 06:15");
    EXPECT_EQ(english("2026-11-20 05:15:00", now), "Yesterday, 6:15 AM");
    EXPECT_EQ(german("2026-11-23 05:15:00", now), "Übermorgen, 06:15");
}

TEST_F(RelativeDateTest, GivesTheDateOfOtherDays) {
    const char* now = "2026-11-21 11:00:00";
    EXPECT_EQ(english("2026-11-23 05:15:00", now), "11/23/26, 6:15 AM");
    EXPECT_EQ(german("2026-11-24 05:15:00", now), "24.11.26, 06:15");
    EXPECT_EQ(german("2026-11-19 05:15:00", now), "19.11.26, 06:15");
    EXPECT_EQ(english("2026-11-19 05:15:00", now), "11/19/26, 6:15 AM");
    EXPECT_EQ(german("2027-01-02 05:15:00", now), "02.01.27, 06:15");
    EXPECT_EQ(english("2027-01-02 05:15:00", now), "1/2/27, 6:15 AM");
}

TEST_F(RelativeDateTest, CallsNoonAndMidnightTwelveInEnglish) {
    EXPECT_EQ(english("2026-11-21 11:00:00", "2026-11-21 08:00:00"), "Today, 12:00 PM");
    EXPECT_EQ(english("2026-11-21 23:00:00", "2026-11-21 08:00:00"), "Tomorrow, 12:00 AM");
    EXPECT_EQ(german("2026-11-21 23:00:00", "2026-11-21 08:00:00"), "Morgen, 00:00");
}

TEST_F(RelativeDateTest, ChangesTheDayAtMidnightHere) {
    EXPECT_EQ(german("2026-11-21 22:59:59", "2026-11-20 23:00:00"), "Heute, 23:59");
    EXPECT_EQ(german("2026-11-21 23:00:00", "2026-11-21 22:59:59"), "Morgen, 00:00");
    EXPECT_EQ(german("2026-11-21 22:59:59", "2026-11-21 23:00:00"), "Gestern, 23:59");
}

TEST_F(RelativeDateTest, CountsDaysAcrossTheEndOfAYear) {
    EXPECT_EQ(english("2027-01-01 08:00:00", "2026-12-31 08:00:00"), "Tomorrow, 9:00 AM");
    EXPECT_EQ(english("2028-02-29 08:00:00", "2028-02-28 08:00:00"), "Tomorrow, 9:00 AM");
}

TEST_F(RelativeDateTest, CountsDaysAndNotHoursWhenTheClockGoesForward) {
    // 23 hours.
    EXPECT_EQ(german("2026-03-29 10:00:00", "2026-03-28 11:00:00"), "Morgen, 12:00");
    EXPECT_EQ(german("2026-03-29 00:59:00", "2026-03-28 11:00:00"), "Morgen, 01:59");
    EXPECT_EQ(german("2026-03-29 01:00:00", "2026-03-28 11:00:00"), "Morgen, 03:00");
    EXPECT_EQ(german("2026-03-29 21:59:00", "2026-03-28 23:00:00"), "Heute, 23:59");
    EXPECT_EQ(german("2026-03-29 22:00:00", "2026-03-28 23:00:00"), "Morgen, 00:00");
}

TEST_F(RelativeDateTest, CountsDaysAndNotHoursWhenTheClockGoesBack) {
    // The day has 25 hours.
    EXPECT_EQ(german("2026-10-25 22:59:00", "2026-10-24 22:00:00"), "Heute, 23:59");
    EXPECT_EQ(german("2026-10-25 23:00:00", "2026-10-24 22:00:00"), "Morgen, 00:00");
    EXPECT_EQ(german("2026-10-25 00:30:00", "2026-10-24 22:00:00"), "Heute, 02:30");
    EXPECT_EQ(german("2026-10-25 01:30:00", "2026-10-24 22:00:00"), "Heute, 02:30");
}

TEST_F(RelativeDateTest, FollowsTheTimeZone) {
    const EnvironmentVariable tokyo("TZ", "JST-9");
    tzset();
    EXPECT_EQ(english("2026-11-21 17:30:00", "2026-11-21 11:00:00"), "Tomorrow, 2:30 AM");
}

TEST_F(RelativeDateTest, LeavesSecondsOut) {
    EXPECT_EQ(english("2026-11-21 11:59:59", "2026-11-21 11:00:00"), "Today, 12:59 PM");
}

TEST_F(RelativeDateTest, UsesPlainBlanks) {
    for (const QChar letter : QString::fromStdString(english("2026-11-23 05:15:00", "2026-11-21 11:00:00"))) {
        EXPECT_LT(letter.unicode(), 0x80);
    }
}

}  // namespace
}  // namespace corvane
