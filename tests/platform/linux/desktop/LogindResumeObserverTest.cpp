#include <future>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/AsioSerialQueue.h"
#include "platform/linux/BusNameWatch.h"
#include "platform/linux/LogindLock.h"
#include "platform/linux/desktop/LogindResumeObserver.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeLogind.h"
#include "tests/support/LogindImpostor.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using testing::IsEmpty;
using testing::StartsWith;

/// A private bus stands in for the system's, a queue for the main loop.
class LogindResumeObserverTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
    }

    void TearDown() override { end(); }

    void observe(std::chrono::milliseconds retry = testPatience) {
        mainLoop.sync([&] {
            observer.emplace(thread, mainLoop, log, retry);
            observer->observe([this] { resumes.add(true); });
        });
        haveThreadsDone();
    }

    void end() {
        mainLoop.sync([&] { observer.reset(); });
    }

    /// Returns when the bus thread and then the main loop have done what they were handed.
    void haveThreadsDone() {
        std::promise<void> done;
        thread.post([&] { mainLoop.async([&] { done.set_value(); }); });
        done.get_future().wait();
    }

    /// Returns when what the login manager has said was heard.
    void hear(FakeLogind& logind) {
        const std::size_t before = resumes.size();
        logind.tellOfSuspend(false);
        ASSERT_TRUE(resumes.waitFor(before + 1));
    }

    /// Returns when what the login manager has answered lies at those who asked. It answers in order, and the
    /// bus has delivered what it got before one question when it answers the next.
    void haveAnswersDelivered() {
        const auto connection = HelperBus{bus.address()}.connect();
        const auto logind = sdbus::createProxy(*connection, Logind::busName, Logind::objectPath);
        logind->callMethod("Get")
            .onInterface("org.freedesktop.DBus.Properties")
            .withArguments(Logind::interface, "PreparingForSleep");
        const auto itself = sdbus::createProxy(*connection, busItself, "/org/freedesktop/DBus");
        for (int question = 0; question < 2; ++question) {
            itself->callMethod("GetId").onInterface(busItself);
        }
    }

    /// As `hear`, for an observer that is on its way to the bus.
    bool hearsSoon(FakeLogind& logind) {
        const std::size_t before = resumes.size();
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (resumes.size() == before && std::chrono::steady_clock::now() < end) {
            logind.tellOfSuspend(false);
            haveThreadsDone();
        }
        return resumes.size() > before;
    }

    bool logs(const std::string& text, std::size_t times) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (log.count(text) < times && std::chrono::steady_clock::now() < end) {
            haveThreadsDone();
        }
        return log.count(text) == times;
    }

    PrivateBus bus;
    const EnvironmentVariable systemBus{"DBUS_SYSTEM_BUS_ADDRESS", bus.place().c_str()};
    RecordingLog log;
    Notes<bool> resumes;
    AsioSerialQueue mainLoop{"main"};
    BusThread thread;
    std::optional<LogindResumeObserver> observer;
};

TEST_F(LogindResumeObserverTest, TellsOfEachResume) {
    FakeLogind logind(bus.address());
    observe();
    logind.tellOfSuspend(true);
    logind.tellOfSuspend(false);
    logind.tellOfSuspend(true);
    logind.tellOfSuspend(false);
    ASSERT_TRUE(resumes.waitFor(2));
    hear(logind);
    EXPECT_EQ(resumes.size(), 3U) << "a suspend itself is no resume";
    EXPECT_THAT(logind.locks().all(), IsEmpty()) << "suspends are not held up";
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LogindResumeObserverTest, TellsOnTheMainLoop) {
    FakeLogind logind(bus.address());
    std::promise<std::thread::id> ranOn;
    std::thread::id main;
    mainLoop.sync([&] {
        main = std::this_thread::get_id();
        observer.emplace(thread, mainLoop, log);
        observer->observe([&] { ranOn.set_value(std::this_thread::get_id()); });
    });
    haveThreadsDone();
    logind.tellOfSuspend(false);
    EXPECT_EQ(ranOn.get_future().get(), main);
}

TEST_F(LogindResumeObserverTest, IgnoresNoticesThatMakeNoSense) {
    FakeLogind logind(bus.address());
    observe();
    logind.tellNonsense();
    hear(logind);
    EXPECT_EQ(resumes.size(), 1U);
}

TEST_F(LogindResumeObserverTest, BelievesNobodyButTheLoginManager) {
    std::optional<FakeLogind> logind(bus.address());
    observe();
    LogindImpostor impostor(bus.address());
    impostor.tellOfSuspend(false);
    hear(*logind);
    EXPECT_EQ(resumes.size(), 1U);

    logind.reset();
    impostor.tellOfSuspend(true);
    impostor.tellOfSuspend(false);
    logind.emplace(bus.address());
    impostor.tellOfSuspend(false);
    hear(*logind);
    EXPECT_EQ(resumes.size(), 2U) << "the new one is believed at once";
}

TEST_F(LogindResumeObserverTest, GoesOnWithALoginManagerThatComesUpAnew) {
    std::optional<FakeLogind> logind(bus.address());
    observe();
    ASSERT_TRUE(logind->questions().waitFor(1));
    hear(*logind);
    logind.reset();
    logind.emplace(bus.address());
    hear(*logind);
    EXPECT_EQ(resumes.size(), 2U) << "its coming up is no resume";
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LogindResumeObserverTest, TakesALoginManagerThatCameUpDuringASuspendForAResume) {
    std::optional<FakeLogind> logind(bus.address());
    observe();
    ASSERT_TRUE(logind->questions().waitFor(1));
    logind->tellOfSuspend(true);
    logind.reset();
    logind.emplace(bus.address());
    EXPECT_TRUE(resumes.waitFor(1));
}

TEST_F(LogindResumeObserverTest, SaysOnceThatThereIsNoLoginManagerAndStillHearsOfALaterOne) {
    observe();
    ASSERT_TRUE(logs("Corvane: no login manager, resumes will not be noticed: ", 1));
    FakeLogind logind(bus.address());
    hear(logind);
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST_F(LogindResumeObserverTest, SaysOnceThatThereIsNoBus) {
    const EnvironmentVariable none("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/no/such/bus");
    observe();
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_THAT(log.lines().front(), StartsWith("Corvane: no login manager, resumes will not be noticed: "));
}

TEST_F(LogindResumeObserverTest, SaysOnceThatTheBusHasGoneAway) {
    std::optional<FakeLogind> logind(bus.address());
    observe();
    ASSERT_TRUE(logind->questions().waitFor(1));
    hear(*logind);
    logind.reset();
    bus.end();
    EXPECT_TRUE(logs("Corvane: lost the login manager: ", 1));
    haveThreadsDone();
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST_F(LogindResumeObserverTest, FindsTheLoginManagerAgainWhenTheBusIsBack) {
    std::optional<FakeLogind> logind(bus.address());
    observe(std::chrono::milliseconds(10));
    ASSERT_TRUE(logind->questions().waitFor(1));
    hear(*logind);
    for (std::size_t times = 1; times <= 2; ++times) {
        logind.reset();
        bus.end();
        ASSERT_TRUE(logs("Corvane: lost the login manager: ", times));
        bus.startAgain();
        ASSERT_EQ(bus.problem(), std::nullopt);
        logind.emplace(bus.address());
        EXPECT_TRUE(hearsSoon(*logind));
    }
    EXPECT_EQ(log.count("Corvane: lost the login manager: "), 2U);
}

TEST_F(LogindResumeObserverTest, TakesABusThatCameBackDuringASuspendForAResume) {
    std::optional<FakeLogind> logind(bus.address());
    logind->prepareForSleep(true);
    // Long enough for a login manager to be there before the observer is.
    observe(std::chrono::milliseconds(300));
    ASSERT_TRUE(logind->questions().waitFor(1));
    haveAnswersDelivered();
    logind.reset();
    bus.end();
    bus.startAgain();
    ASSERT_EQ(bus.problem(), std::nullopt);
    logind.emplace(bus.address());
    EXPECT_TRUE(resumes.waitFor(1));
}

TEST_F(LogindResumeObserverTest, TellsNobodyWhoHasGone) {
    FakeLogind logind(bus.address());
    mainLoop.sync([&] {
        observer.emplace(thread, mainLoop, log);
        observer->observe([this] { resumes.add(true); });
        // Heard while the main loop is busy ending the observer.
        logind.tellOfSuspend(false);
        observer.reset();
    });
    haveThreadsDone();
    EXPECT_THAT(resumes.all(), IsEmpty());
}

TEST_F(LogindResumeObserverTest, MayGoWithoutHavingObserved) {
    mainLoop.sync([&] { observer.emplace(thread, mainLoop, log); });
    end();
    EXPECT_THAT(log.lines(), IsEmpty());
}

}  // namespace
}  // namespace corvane
