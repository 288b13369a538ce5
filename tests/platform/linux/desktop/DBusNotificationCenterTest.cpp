#include <algorithm>
#include <future>
#include <optional>
#include <set>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/AsioSerialQueue.h"
#include "platform/linux/desktop/DBusNotificationCenter.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeNotifications.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using Manner = FakeNotifications::Manner;

/// A private bus stands in for the session's. Everything on the main loop is done by `onMain`.
class DBusNotificationCenterTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus->problem()) {
            GTEST_SKIP() << *bus->problem();
        }
    }
    ~DBusNotificationCenterTest() override { endCenter(); }

    /// As long as tests wait: for those of a server that answers.
    void beginCenter(Duration patience = testPatience) {
        mainLoop.sync([&] { center.emplace(busThread, mainLoop, HelperBus{"session"}, patience); });
    }
    void endCenter() {
        mainLoop.sync([this] { center.reset(); });
    }

    void post(const std::string& title, const std::string& body = "body") {
        mainLoop.sync([&] { center->add({"identifier of " + title, title, body}); });
    }

    /// Waits until the bus thread has done what it was given so far.
    void settle() {
        std::promise<void> done;
        busThread.post([&] { done.set_value(); });
        done.get_future().wait();
    }

    static std::vector<std::string> titles(const FakeNotifications& server) {
        std::vector<std::string> titles;
        for (const auto& shown : server.shown().all()) {
            titles.push_back(shown.title);
        }
        return titles;
    }

    /// Posts until one with this title arrives, as a person who goes on living beside a failure does.
    testing::AssertionResult postUntilShown(const FakeNotifications& server,
                                            const std::string& title = "again",
                                            const std::string& body = "body") {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (std::ranges::count(titles(server), title) == 0) {
            if (std::chrono::steady_clock::now() > end) {
                return testing::AssertionFailure() << "nothing arrived";
            }
            post(title, body);
            settle();
        }
        return testing::AssertionSuccess();
    }

    std::optional<PrivateBus> bus{std::in_place};
    std::optional<EnvironmentVariable> sessionBus{std::in_place, "DBUS_SESSION_BUS_ADDRESS",
                                                  bus->address().c_str()};
    AsioSerialQueue mainLoop{"main"};
    BusThread busThread;
    std::optional<DBusNotificationCenter> center;
};

TEST_F(DBusNotificationCenterTest, PostsWithTheApplicationsNameIconAndSound) {
    const FakeNotifications server(bus->address());
    beginCenter();
    post("Keep-awake finished", "The timer ended — your Mac is back to its normal sleep behaviour.");
    ASSERT_TRUE(server.shown().waitFor(1));
    const FakeNotifications::Shown shown = server.shown().all().front();
    EXPECT_EQ(shown.application, "Corvane");
    EXPECT_EQ(shown.replaces, 0U);
    EXPECT_EQ(shown.icon, "de.tavrin.corvane");
    EXPECT_EQ(shown.title, "Keep-awake finished");
    EXPECT_EQ(shown.body, "The timer ended — your Mac is back to its normal sleep behaviour.");
    EXPECT_THAT(shown.actions, IsEmpty());
    EXPECT_EQ(shown.milliseconds, -1);
    ASSERT_EQ(shown.hints.size(), 3U);
    EXPECT_EQ(shown.hints.at("desktop-entry").get<std::string>(), "de.tavrin.corvane");
    EXPECT_EQ(shown.hints.at("urgency").get<std::uint8_t>(), 1);
    EXPECT_EQ(shown.hints.at("sound-name").get<std::string>(), "message-new-instant");
}

TEST_F(DBusNotificationCenterTest, PostsInOrderAndReplacesNothing) {
    const FakeNotifications server(bus->address());
    beginCenter();
    for (const char* title : {"one", "two", "three"}) {
        post(title);
    }
    ASSERT_TRUE(server.shown().waitFor(3));
    EXPECT_THAT(titles(server), ElementsAre("one", "two", "three"));
    std::set<std::uint32_t> ids;
    for (const auto& shown : server.shown().all()) {
        ids.insert(shown.id);
        EXPECT_EQ(shown.replaces, 0U);
    }
    EXPECT_EQ(ids.size(), 3U);
}

TEST_F(DBusNotificationCenterTest, ShowsTextsToTheLetterWhereTheyAreNoMarkup) {
    const FakeNotifications server(bus->address(), {"body", "actions"});
    beginCenter();
    post("<1> & 2", "CPU & GPU < 100 °C > 90 °C &amp;");
    ASSERT_TRUE(server.shown().waitFor(1));
    EXPECT_EQ(server.shown().all().front().title, "<1> & 2");
    EXPECT_EQ(server.shown().all().front().body, "CPU & GPU < 100 °C > 90 °C &amp;");
}

TEST_F(DBusNotificationCenterTest, EscapesTheBodyAndOnlyThatWhereItIsMarkup) {
    const FakeNotifications server(bus->address(), {"body", "body-markup"});
    beginCenter();
    post("<1> & 2", "CPU & GPU < 100 °C > 90 °C &amp;");
    ASSERT_TRUE(server.shown().waitFor(1));
    EXPECT_EQ(server.shown().all().front().title, "<1> & 2");
    EXPECT_EQ(server.shown().all().front().body, "CPU &amp; GPU &lt; 100 °C &gt; 90 °C &amp;amp;");
}

TEST_F(DBusNotificationCenterTest, AsksEachServerOnceWhatItTakes) {
    std::optional<FakeNotifications> server(std::in_place, bus->address(),
                                            std::vector<std::string>{"body-markup"});
    beginCenter();
    post("one", "<");
    post("two", "<");
    ASSERT_TRUE(server->shown().waitFor(2));
    post("three", "<");
    ASSERT_TRUE(server->shown().waitFor(3));
    EXPECT_EQ(server->capabilityRequests().size(), 1U);
    server.reset();

    server.emplace(bus->address());
    ASSERT_TRUE(postUntilShown(*server, "again", "<"));
    EXPECT_EQ(server->shown().all().back().body, "<");
    EXPECT_EQ(server->capabilityRequests().size(), 1U);
}

TEST_F(DBusNotificationCenterTest, CountsPermissionAsGiven) {
    beginCenter();
    std::promise<NotificationAuthorization> told;
    bool isReplied = false;
    mainLoop.sync([&] {
        EXPECT_TRUE(center->isAvailable());
        center->presentInForeground();
        center->requestAuthorization();
        center->getAuthorization([&](NotificationAuthorization authorization) {
            isReplied = true;
            told.set_value(authorization);
        });
        EXPECT_FALSE(isReplied) << "later";
    });
    EXPECT_EQ(told.get_future().get(), NotificationAuthorization::authorized);
}

TEST_F(DBusNotificationCenterTest, DropsWhatIsPostedWithoutAServer) {
    beginCenter();
    post("lost");
    settle();
    const FakeNotifications server(bus->address());
    ASSERT_TRUE(postUntilShown(server));
    EXPECT_THAT(titles(server), testing::Each("again"));
}

TEST_F(DBusNotificationCenterTest, DropsWhatIsPostedWithoutABusAndFindsALaterBus) {
    sessionBus.reset();
    sessionBus.emplace("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    beginCenter();
    for (int i = 0; i < 50; ++i) {
        post("lost");
    }
    settle();
    sessionBus.reset();
    sessionBus.emplace("DBUS_SESSION_BUS_ADDRESS", bus->address().c_str());
    const FakeNotifications server(bus->address());
    post("found");
    ASSERT_TRUE(server.shown().waitFor(1));
    EXPECT_THAT(titles(server), ElementsAre("found"));
}

TEST_F(DBusNotificationCenterTest, GoesOnAfterABusThatWentAway) {
    std::optional<FakeNotifications> server(std::in_place, bus->address());
    beginCenter();
    ASSERT_TRUE(postUntilShown(*server));
    server.reset();
    bus->end();
    post("lost");
    settle();
    sessionBus.reset();
    bus.emplace();
    ASSERT_EQ(bus->problem(), std::nullopt);
    sessionBus.emplace("DBUS_SESSION_BUS_ADDRESS", bus->address().c_str());
    server.emplace(bus->address());
    ASSERT_TRUE(postUntilShown(*server));
    EXPECT_THAT(titles(*server), testing::Each("again"));
}

TEST_F(DBusNotificationCenterTest, SurvivesServersThatAnswerWithErrorsOrNonsense) {
    for (const Manner manner : {Manner::withErrors, Manner::withNonsense}) {
        SCOPED_TRACE(static_cast<int>(manner));
        const FakeNotifications server(bus->address(), {}, manner);
        beginCenter();
        for (std::size_t i = 0; i < 2 * DBusNotificationCenter::maxUnderWay; ++i) {
            post("lost");
        }
        ASSERT_TRUE(server.capabilityRequests().waitFor(1));
        settle();
        EXPECT_EQ(server.shown().size(), 0U);
        endCenter();
    }
    const FakeNotifications server(bus->address());
    beginCenter();
    post("found");
    EXPECT_TRUE(server.shown().waitFor(1));
}

TEST_F(DBusNotificationCenterTest, KeepsOnlySoManyForAServerThatDoesNotAnswerAndDropsThemInTheEnd) {
    std::optional<FakeNotifications> server(std::in_place, bus->address(), std::vector<std::string>{},
                                            Manner::notAtAll);
    beginCenter(50ms);
    post("lost");
    ASSERT_TRUE(server->capabilityRequests().waitFor(1));
    // Another connection asks again: the one before was given up, and what waited on it with it.
    while (server->capabilityRequests().size() < 2) {
        post("lost");
        settle();
    }
    EXPECT_NE(server->capabilityRequests().all().at(0), server->capabilityRequests().all().at(1));
    server.reset();
    server.emplace(bus->address());
    EXPECT_TRUE(postUntilShown(*server));
    EXPECT_THAT(titles(*server), testing::Each("again"));
}

TEST_F(DBusNotificationCenterTest, DropsTheNewestWhenTooManyAreUnderWay) {
    const FakeNotifications server(bus->address());
    beginCenter();
    // Nothing goes out before all were posted.
    std::promise<void> goOn;
    busThread.post([&] { goOn.get_future().wait(); });
    for (std::size_t i = 0; i < DBusNotificationCenter::maxUnderWay + 5; ++i) {
        post(fmt::format("{}", i));
    }
    goOn.set_value();
    ASSERT_TRUE(server.shown().waitFor(DBusNotificationCenter::maxUnderWay));
    // There is room again once the answers have come.
    ASSERT_TRUE(postUntilShown(server, "last"));
    const std::vector<std::string> shown = titles(server);
    EXPECT_EQ(shown.at(0), "0");
    EXPECT_EQ(shown.at(DBusNotificationCenter::maxUnderWay - 1), "15");
    EXPECT_EQ(shown.at(DBusNotificationCenter::maxUnderWay), "last");
}

TEST_F(DBusNotificationCenterTest, GivesUpOnAServerWhoseStartHangs) {
    bus->offer("org.freedesktop.Notifications", "/bin/sleep 5");
    beginCenter(50ms);
    for (std::size_t i = 0; i < 2 * DBusNotificationCenter::maxUnderWay; ++i) {
        post("lost");
    }
    settle();
    const FakeNotifications server(bus->address());
    EXPECT_TRUE(postUntilShown(server));
}

TEST_F(DBusNotificationCenterTest, HoldsUpNobodyButTheBusThreadWhileTheBusHangs) {
    bus->freeze();
    beginCenter();
    for (std::size_t i = 0; i < 2 * DBusNotificationCenter::maxUnderWay; ++i) {
        post("lost");
    }
    // Posting has come back each time, though nobody answers; the attempt to connect ends with the bus.
    bus->end();
    settle();
    sessionBus.reset();
    bus.emplace();
    ASSERT_EQ(bus->problem(), std::nullopt);
    sessionBus.emplace("DBUS_SESSION_BUS_ADDRESS", bus->address().c_str());
    const FakeNotifications server(bus->address());
    EXPECT_TRUE(postUntilShown(server));
    EXPECT_THAT(titles(server), testing::Each("again"));
}

TEST_F(DBusNotificationCenterTest, CanEndWithNotificationsUnderWay) {
    const FakeNotifications server(bus->address(), {}, Manner::notAtAll);
    beginCenter();
    post("lost");
    ASSERT_TRUE(server.capabilityRequests().waitFor(1));
    post("lost");
    endCenter();
    settle();
    EXPECT_EQ(server.shown().size(), 0U);
}

}  // namespace
}  // namespace corvane
