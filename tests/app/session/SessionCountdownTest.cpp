#include <ctime>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/session/SessionMachine.h"
#include "tests/support/EnvironmentVariable.h"

namespace corvane {
namespace {

class SessionCountdown : public SessionTest {
protected:
    std::string remainingOf(Duration duration) {
        manager().apply({Kind::system}, in(duration));
        return manager().remainingText().toStdString();
    }
};

TEST_F(SessionCountdown, IsThereOnlyWhileThereIsAnEnd) {
    EXPECT_TRUE(manager().remainingText().isNull());
    EXPECT_TRUE(manager().expiryDescription().isNull());
    manager().apply({Kind::system}, std::nullopt);
    EXPECT_TRUE(manager().remainingText().isNull());
    EXPECT_TRUE(manager().expiryDescription().isNull());
    manager().apply({Kind::system}, in(1h));
    EXPECT_FALSE(manager().remainingText().isNull());
    EXPECT_FALSE(manager().expiryDescription().isNull());
}

TEST_F(SessionCountdown, CountsMinutesAndSecondsAndHoursFromOneOn) {
    EXPECT_EQ(remainingOf(0s), "0:00");
    EXPECT_EQ(remainingOf(1s), "0:01");
    EXPECT_EQ(remainingOf(59s), "0:59");
    EXPECT_EQ(remainingOf(60s), "1:00");
    EXPECT_EQ(remainingOf(605s), "10:05");
    EXPECT_EQ(remainingOf(3599s), "59:59");
    EXPECT_EQ(remainingOf(3600s), "1:00:00");
    EXPECT_EQ(remainingOf(3661s), "1:01:01");
    EXPECT_EQ(remainingOf(24h), "24:00:00");
    EXPECT_EQ(remainingOf(100h + 59s), "100:00:59");
}

TEST_F(SessionCountdown, LeavesOutPartsOfASecond) {
    EXPECT_EQ(remainingOf(999ms), "0:00");
    EXPECT_EQ(remainingOf(59s + 999ms), "0:59");
    EXPECT_EQ(remainingOf(3599s + 999ms), "59:59");
}

TEST_F(SessionCountdown, NeverGoesBelowZero) {
    EXPECT_EQ(remainingOf(-1h), "0:00");
    EXPECT_EQ(remainingOf(-1ms), "0:00");
}

TEST_F(SessionCountdown, GoesDownOnceASecond) {
    EXPECT_EQ(remainingOf(1h), "1:00:00");
    machine.advance(999ms);
    EXPECT_EQ(manager().remainingText(), "1:00:00");
    machine.advance(1ms);
    EXPECT_EQ(manager().remainingText(), "59:59");
    machine.advance(59min + 58s);
    EXPECT_EQ(manager().remainingText(), "0:01");
}

TEST_F(SessionCountdown, MayShowTooMuchUntilItsFirstTick) {
    machine.advance(1h);
    EXPECT_EQ(remainingOf(10min), "1:10:00") << "the clock was last read when the application started";
    machine.advance(1s);
    EXPECT_EQ(manager().remainingText(), "9:59");
    manager().stopSession();
    machine.advance(5min);
    EXPECT_EQ(remainingOf(10min), "15:00") << "it was last read in the former session";
    machine.advance(1s);
    EXPECT_EQ(manager().remainingText(), "9:59");
}

TEST_F(SessionCountdown, TicksOnlyWhileThereIsAnEnd) {
    int ticks = 0;
    QObject::connect(&manager(), &SleepManager::nowChanged, [&] { ++ticks; });
    machine.advance(1min);
    EXPECT_EQ(ticks, 0);
    manager().apply({Kind::system}, in(1h));
    machine.advance(10s);
    EXPECT_EQ(ticks, 10);
    EXPECT_EQ(manager().now(), machine.wallTime());
    manager().cancelExpiry();
    machine.advance(1min);
    EXPECT_EQ(ticks, 10);
}

TEST_F(SessionCountdown, TicksOnceASecondHoweverOftenTheEndIsMoved) {
    int ticks = 0;
    for (int i = 0; i < 5; ++i) {
        manager().apply({Kind::system}, in(1h));
    }
    QObject::connect(&manager(), &SleepManager::nowChanged, [&] { ++ticks; });
    machine.advance(10s);
    EXPECT_EQ(ticks, 10);
}

TEST_F(SessionCountdown, IsAnnouncedWhenTheTimeOrTheEndChanges) {
    int announced = 0;
    QObject::connect(&manager(), &SleepManager::countdownChanged, [&] { ++announced; });
    manager().apply({Kind::system}, in(1h));
    EXPECT_EQ(announced, 1);
    machine.advance(3s);
    EXPECT_EQ(announced, 4);
    manager().stopSession();
    EXPECT_EQ(announced, 5);
}

TEST_F(SessionCountdown, IsSeenByAView) {
    manager().apply({Kind::system}, in(90s));
    EXPECT_EQ(manager().property("remainingText").toString(), "1:30");
    EXPECT_EQ(manager().property("expiryDescription").toString(), manager().expiryDescription());
    machine.advance(1s);
    EXPECT_EQ(manager().property("remainingText").toString(), "1:29");
    const auto now = std::chrono::floor<std::chrono::milliseconds>(machine.wallTime().time_since_epoch());
    EXPECT_EQ(manager().property("now").toDateTime().toMSecsSinceEpoch(), now.count());
}

/// In UTC, at noon of 2026-11-21.
class SessionEndDescription : public SessionTest {
protected:
    SessionEndDescription() {
        tzset();
        machine.setClock(std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + 12h);
    }
    SessionEndDescription(const SessionEndDescription&) = delete;
    SessionEndDescription& operator=(const SessionEndDescription&) = delete;
    ~SessionEndDescription() override { tzset(); }

    std::string descriptionOf(Duration duration) {
        manager().apply({Kind::system}, in(duration));
        return manager().expiryDescription().toStdString();
    }

    EnvironmentVariable zone{"TZ", "UTC0"};
};

TEST_F(SessionEndDescription, IsInTheUsersLanguage) {
    EXPECT_EQ(descriptionOf(6h + 30min), "Today, 6:30 PM");
    EXPECT_EQ(descriptionOf(48h), "11/23/26, 12:00 PM");
    machine.locale.prefer({"de-DE"});
    EXPECT_EQ(descriptionOf(6h + 30min), "Heute, 18:30");
    EXPECT_EQ(descriptionOf(72h), "24.11.26, 12:00");
}

TEST_F(SessionEndDescription, ChangesWithTheDay) {
    EXPECT_EQ(descriptionOf(18h), "Tomorrow, 6:00 AM");
    machine.advance(12h);
    EXPECT_EQ(manager().expiryDescription(), "Today, 6:00 AM");
}

}  // namespace
}  // namespace corvane
