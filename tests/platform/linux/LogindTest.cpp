// What is asked of the login manager: notice of suspends, and the lid setting.

#include <functional>
#include <optional>

#include <asio/io_context.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/LogindObserver.h"
#include "platform/linux/LogindSleepSetting.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeLogind.h"
#include "tests/support/LogindImpostor.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* delayLock = "sleep|Corvane|Fans are handed back before sleep|delay";
constexpr const char* lidLock = "sleep:handle-lid-switch|Corvane|The lid may be closed|block";

/// A private bus stands in for the system's.
class LogindTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
    }

    PrivateBus bus;
    const EnvironmentVariable systemBus{"DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str()};
};

/// The test's own thread is the main thread.
class LogindObserverTest : public LogindTest {
protected:
    void observe() {
        observer.observe([this] { beforeSuspend(); }, [this] { heard.emplace_back("resumed"); });
    }

    /// False when that did not happen in the time a test waits.
    bool runUntil(const std::function<bool()>& isDone) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (!isDone() && std::chrono::steady_clock::now() < end) {
            context.restart();
            context.run_one_for(std::chrono::milliseconds(100));
        }
        return isDone();
    }

    bool runUntilHeard(std::size_t count) {
        return runUntil([&] { return heard.size() == count; });
    }

    std::function<void()> beforeSuspend = [this] { heard.emplace_back("suspending"); };
    std::vector<std::string> heard;
    RecordingLog log;
    asio::io_context context{1};
    LogindObserver observer{context, log, [this] { heard.emplace_back("restarted"); }};
};

TEST_F(LogindObserverTest, HoldsEachSuspendUpUntilItWasHeard) {
    FakeLogind logind(bus.address());
    observe();
    ASSERT_EQ(logind.locks().size(), 1U);
    EXPECT_EQ(logind.request(0), delayLock);
    beforeSuspend = [&] { heard.emplace_back(logind.isHeld(0) ? "suspending" : "too late"); };

    logind.tellOfSuspend(true);
    ASSERT_TRUE(runUntilHeard(1));
    EXPECT_TRUE(logind.waitForRelease(0));
    logind.tellOfSuspend(false);
    ASSERT_TRUE(runUntilHeard(2));
    EXPECT_THAT(heard, ElementsAre("suspending", "resumed"));
    ASSERT_EQ(logind.locks().size(), 2U) << "for the next suspend";
    EXPECT_EQ(logind.request(1), delayLock);
    EXPECT_TRUE(logind.isHeld(1));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LogindObserverTest, HearsAtOnceOfASuspendThatIsBeingPreparedAlready) {
    FakeLogind logind(bus.address());
    logind.prepareForSleep(true);
    observe();
    EXPECT_THAT(heard, ElementsAre("suspending"));
    EXPECT_EQ(logind.locks().size(), 0U);

    logind.tellOfSuspend(false);
    ASSERT_TRUE(runUntilHeard(2));
    EXPECT_EQ(heard.back(), "resumed");
    ASSERT_EQ(logind.locks().size(), 1U) << "for the next suspend";
    EXPECT_EQ(logind.request(0), delayLock);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LogindObserverTest, IgnoresNoticesThatMakeNoSense) {
    FakeLogind logind(bus.address());
    observe();
    logind.tellNonsense();
    logind.tellOfSuspend(true);
    ASSERT_TRUE(runUntilHeard(1));
    EXPECT_THAT(heard, ElementsAre("suspending"));
}

TEST_F(LogindObserverTest, BelievesNobodyButTheLoginManager) {
    FakeLogind logind(bus.address());
    observe();
    LogindImpostor impostor(bus.address());
    impostor.tellOfSuspend(true);
    impostor.tellOfSuspend(false);
    logind.tellOfSuspend(true);
    ASSERT_TRUE(runUntil([&] { return !heard.empty() && !logind.isHeld(0); }));
    EXPECT_THAT(heard, ElementsAre("suspending"));
    EXPECT_EQ(logind.locks().size(), 1U);
}

TEST_F(LogindObserverTest, BelievesNobodyWhileThereIsNoLoginManagerAndThenTheNewOneOnly) {
    std::optional<FakeLogind> logind(bus.address());
    observe();
    LogindImpostor impostor(bus.address());
    logind.reset();
    impostor.tellOfSuspend(true);
    logind.emplace(bus.address());
    ASSERT_TRUE(runUntilHeard(2));
    impostor.tellOfSuspend(true);
    logind->tellOfSuspend(true);
    ASSERT_TRUE(runUntil([&] { return !logind->isHeld(0); }));
    EXPECT_THAT(heard, ElementsAre("resumed", "restarted", "suspending"));
}

TEST_F(LogindObserverTest, GoesOnWithALoginManagerThatComesUpAnew) {
    std::optional<FakeLogind> logind(bus.address());
    observe();
    logind.reset();
    logind.emplace(bus.address());
    ASSERT_TRUE(runUntilHeard(2));
    EXPECT_THAT(heard, ElementsAre("resumed", "restarted"));
    ASSERT_EQ(logind->locks().size(), 1U);
    EXPECT_TRUE(logind->isHeld(0));
    logind->tellOfSuspend(true);
    ASSERT_TRUE(runUntilHeard(3));
    EXPECT_EQ(heard.back(), "suspending");
}

TEST_F(LogindObserverTest, SaysSoWhenSuspendsCannotBeDelayedAndStillHearsOfALaterLoginManager) {
    observe();
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_THAT(log.lines().front(), testing::StartsWith("Corvane daemon: suspends cannot be delayed: "));
    FakeLogind logind(bus.address());
    ASSERT_TRUE(runUntilHeard(2));
    EXPECT_EQ(logind.locks().size(), 1U);
    logind.tellOfSuspend(true);
    ASSERT_TRUE(runUntilHeard(3));
    EXPECT_EQ(heard.back(), "suspending");
}

TEST_F(LogindObserverTest, SaysSoWhenThereIsNoBus) {
    const EnvironmentVariable none("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/no/such/bus");
    observe();
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_THAT(log.lines().front(),
                testing::StartsWith("Corvane daemon: no login manager, suspends will not be noticed: "));
}

TEST_F(LogindObserverTest, SaysOnceThatTheBusHasGoneAway) {
    std::optional<FakeLogind> logind(bus.address());
    observe();
    logind.reset();
    bus.end();
    ASSERT_TRUE(runUntil([&] { return log.count("lost the login manager") > 0; }));
    context.restart();
    context.poll();
    EXPECT_EQ(log.count("lost the login manager"), 1U);
}

class LogindSleepSettingTest : public LogindTest {
protected:
    LogindSleepSetting setting;
};

TEST_F(LogindSleepSettingTest, HoldsALockWhileSleepIsDisabled) {
    const FakeLogind logind(bus.address());
    EXPECT_EQ(setting.setSleepDisabled(true), std::nullopt);
    ASSERT_EQ(logind.locks().size(), 1U);
    EXPECT_EQ(logind.request(0), lidLock);
    EXPECT_TRUE(logind.isHeld(0));
    EXPECT_EQ(setting.setSleepDisabled(false), std::nullopt);
    EXPECT_TRUE(logind.waitForRelease(0));
    EXPECT_EQ(setting.setSleepDisabled(false), std::nullopt);
}

TEST_F(LogindSleepSettingTest, HoldsOneLockHoweverOftenItIsAsked) {
    const FakeLogind logind(bus.address());
    setting.setSleepDisabled(true);
    setting.setSleepDisabled(true);
    ASSERT_EQ(logind.locks().size(), 2U);
    EXPECT_TRUE(logind.waitForRelease(0));
    EXPECT_TRUE(logind.isHeld(1));
}

TEST_F(LogindSleepSettingTest, SaysWhatPreventedItAndTriesAnewTheNextTime) {
    EXPECT_NE(setting.setSleepDisabled(true).value_or(""), "");
    const FakeLogind logind(bus.address());
    EXPECT_EQ(setting.setSleepDisabled(true), std::nullopt);
    EXPECT_TRUE(logind.isHeld(0));
}

TEST_F(LogindSleepSettingTest, TakesItsLockFromALoginManagerThatCameUpAnew) {
    std::optional<FakeLogind> logind(bus.address());
    setting.setSleepDisabled(true);
    logind.reset();
    logind.emplace(bus.address());
    setting.takeAgain();
    ASSERT_EQ(logind->locks().size(), 1U);
    EXPECT_EQ(logind->request(0), lidLock);
    EXPECT_TRUE(logind->isHeld(0));
}

TEST_F(LogindSleepSettingTest, TakesNothingAgainThatItDoesNotHold) {
    const FakeLogind logind(bus.address());
    setting.takeAgain();
    setting.setSleepDisabled(true);
    setting.setSleepDisabled(false);
    setting.takeAgain();
    EXPECT_EQ(logind.locks().size(), 1U);
}

}  // namespace
}  // namespace corvane
