// The listener on a bus of its own, with a scripted helper behind it.

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/DBusHelperListener.h"
#include "tests/support/BusCaller.h"
#include "tests/support/ListenerThread.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/ScriptedHelper.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr const char* limitsExceeded = "org.freedesktop.DBus.Error.LimitsExceeded";
constexpr const char* invalidArgs = "org.freedesktop.DBus.Error.InvalidArgs";
constexpr const char* unknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";

class DBusHelperListenerTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
    }

    /// Begins `count` status requests of `caller`, whose outcomes go to `outcomes`.
    void beginStatus(BusCaller& caller, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            caller.begin<BusDictionary>("getStatusWithReply",
                                        [this](const std::string& error) { outcomes.push_back(error); });
        }
    }

    PrivateBus bus;
    std::shared_ptr<ScriptedHelper> helper = std::make_shared<ScriptedHelper>();
    std::vector<std::string> outcomes;
};

TEST_F(DBusHelperListenerTest, CarriesTheFiveMembersAndTheirReplies) {
    const ListenerThread listener(bus.address(), helper);
    ASSERT_EQ(listener.failure(), std::nullopt);
    BusCaller caller(bus.address());
    EXPECT_THAT(caller.call("pingWithReply"), Pair(true, "pong"));
    EXPECT_THAT(caller.status().entries(), testing::IsEmpty());
    EXPECT_THAT(caller.call("setFanFloorWithPercentWithReply", 42.9), Pair(true, "floor"));
    EXPECT_THAT(caller.call("stopBoostWithReply"), Pair(false, "stopped"));
    EXPECT_THAT(caller.call("setLidStayAwakeWithReply", true), Pair(true, "lid"));
    EXPECT_THAT(caller.call("setLidStayAwakeWithReply", false), Pair(true, "lid"));
    EXPECT_THAT(helper->calls().all(),
                ElementsAre("ping", "status", "floor 42.9", "stop", "lid true", "lid false"));
}

TEST_F(DBusHelperListenerTest, CarriesRealsThatAreNotFinite) {
    const ListenerThread listener(bus.address(), helper);
    BusCaller caller(bus.address());
    for (const double percent : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        caller.call("setFanFloorWithPercentWithReply", percent);
    }
    EXPECT_THAT(helper->calls().all(), ElementsAre("floor nan", "floor inf", "floor -inf"));
}

TEST_F(DBusHelperListenerTest, AnswersMalformedCallsWithAnErrorAndLives) {
    const ListenerThread listener(bus.address(), helper);
    BusCaller caller(bus.address());
    const std::string interface = HelperAddress::interface;
    EXPECT_EQ(caller.errorOf(interface, "setFanFloorWithPercentWithReply"), invalidArgs);
    EXPECT_EQ(caller.errorOf(interface, "setFanFloorWithPercentWithReply", std::string("42")), invalidArgs);
    EXPECT_EQ(caller.errorOf(interface, "setFanFloorWithPercentWithReply", 42.0, 42.0), invalidArgs);
    EXPECT_EQ(caller.errorOf(interface, "setLidStayAwakeWithReply", std::int32_t{1}), invalidArgs);
    EXPECT_EQ(caller.errorOf(interface, "pingWithReply", 1.0), invalidArgs);
    EXPECT_EQ(caller.errorOf(interface, "ping"), unknownMethod);
    EXPECT_EQ(caller.errorOf("de.tavrin.corvane.Other", "pingWithReply"), unknownMethod);
    EXPECT_EQ(helper->calls().size(), 0U) << "none of it reaches the helper";
    EXPECT_THAT(caller.call("pingWithReply"), Pair(true, "pong"));
}

TEST_F(DBusHelperListenerTest, RefusesACallersRequestsBeyond64ThatWait) {
    helper->keepReplies();
    const ListenerThread listener(bus.address(), helper);
    BusCaller greedy(bus.address());
    beginStatus(greedy, RequestLimiter::maxWaitingPerCaller + 1);
    ASSERT_TRUE(greedy.processUntil([&] { return !outcomes.empty(); }));
    EXPECT_THAT(outcomes, ElementsAre(limitsExceeded));
    EXPECT_EQ(helper->kept().size(), RequestLimiter::maxWaitingPerCaller);
    EXPECT_THAT(BusCaller(bus.address()).call("pingWithReply"), Pair(true, "pong")) << "others are served";

    for (const auto& reply : helper->takeKept()) {
        reply({});
    }
    ASSERT_TRUE(
        greedy.processUntil([&] { return outcomes.size() == RequestLimiter::maxWaitingPerCaller + 1; }));
    outcomes.erase(outcomes.begin());
    EXPECT_THAT(outcomes, testing::Each("")) << "those that were admitted are answered";
    EXPECT_THAT(greedy.call("pingWithReply"), Pair(true, "pong"));
}

TEST_F(DBusHelperListenerTest, OutlivesACallerThatVanishesBeforeItsReply) {
    helper->keepReplies();
    const ListenerThread listener(bus.address(), helper);
    {
        BusCaller vanishing(bus.address());
        beginStatus(vanishing, 1);
        ASSERT_TRUE(helper->kept().waitFor(1));
    }
    for (const auto& reply : helper->takeKept()) {
        reply({});
    }
    EXPECT_THAT(BusCaller(bus.address()).call("pingWithReply"), Pair(true, "pong"));
}

TEST_F(DBusHelperListenerTest, ServesOthersWhileACallerNeverReadsItsReplies) {
    const ListenerThread listener(bus.address(), helper);
    constexpr std::size_t requests = 3000;
    BusCaller deaf(bus.address());
    beginStatus(deaf, requests);
    BusCaller other(bus.address());
    EXPECT_THAT(other.call("pingWithReply"), Pair(true, "pong"));
    ASSERT_TRUE(deaf.processUntil([&] { return outcomes.size() == requests; })) << "nothing was lost";
    EXPECT_THAT(outcomes, testing::Each(testing::AnyOf("", limitsExceeded)));
}

TEST_F(DBusHelperListenerTest, LetsRepliesArriveAfterItIsGone) {
    helper->keepReplies();
    ListenerThread listener(bus.address(), helper);
    BusCaller caller(bus.address());
    beginStatus(caller, 2);
    ASSERT_TRUE(helper->kept().waitFor(2));
    listener.endListener();
    for (const auto& reply : helper->takeKept()) {
        reply({});
    }
    ASSERT_TRUE(caller.processUntil([&] { return outcomes.size() == 2; }));
    EXPECT_THAT(outcomes, testing::Each("org.freedesktop.DBus.Error.NoReply"));
    EXPECT_EQ(listener.losses().size(), 0U);
}

TEST_F(DBusHelperListenerTest, TellsWhenAnotherOwnsItsName) {
    const ListenerThread first(bus.address(), helper);
    ASSERT_EQ(first.failure(), std::nullopt);
    const ListenerThread second(bus.address(), helper);
    ASSERT_NE(second.failure(), std::nullopt);
    EXPECT_THAT(*second.failure(), testing::HasSubstr("request bus name"));
    EXPECT_THAT(BusCaller(bus.address()).call("pingWithReply"), Pair(true, "pong")) << "the first goes on";
}

TEST_F(DBusHelperListenerTest, TellsWhenTheConnectionIsRefused) {
    const ListenerThread listener(bus.address(), nullptr);
    EXPECT_EQ(listener.failure(), "the connection was refused");
    BusCaller caller(bus.address());
    EXPECT_EQ(caller.errorOf(HelperAddress::interface, "pingWithReply"),
              "org.freedesktop.DBus.Error.ServiceUnknown");
}

TEST_F(DBusHelperListenerTest, TellsOnceThatTheBusHasGoneAway) {
    ListenerThread listener(bus.address(), helper);
    bus.end();
    ASSERT_TRUE(listener.losses().waitFor(1));
    listener.run([] {});
    listener.run([] {});
    EXPECT_EQ(listener.losses().size(), 1U);
    EXPECT_NE(listener.losses().all().front(), "");
}

TEST_F(DBusHelperListenerTest, TellsOnceThatTheBusHasGoneAwayWithRepliesUnderWay) {
    helper->keepReplies();
    ListenerThread listener(bus.address(), helper);
    BusCaller caller(bus.address());
    beginStatus(caller, RequestLimiter::maxWaitingPerCaller);
    ASSERT_TRUE(helper->kept().waitFor(RequestLimiter::maxWaitingPerCaller));
    bus.freeze();
    // More in all than the socket takes: the listener waits to write as well as to read.
    StatusRecord large;
    large.set("text", std::string(500'000, 'x'));
    for (const auto& reply : helper->takeKept()) {
        reply(large);
    }
    listener.run([] {});
    bus.end();
    ASSERT_TRUE(listener.losses().waitFor(1));
    listener.run([] {});
    listener.run([] {});
    EXPECT_EQ(listener.losses().size(), 1U);
}

TEST_F(DBusHelperListenerTest, TakesRepliesForABusThatHasGoneAway) {
    helper->keepReplies();
    ListenerThread listener(bus.address(), helper);
    BusCaller caller(bus.address());
    beginStatus(caller, 1);
    ASSERT_TRUE(helper->kept().waitFor(1));
    bus.end();
    ASSERT_TRUE(listener.losses().waitFor(1));
    for (const auto& reply : helper->takeKept()) {
        reply({});
    }
    listener.run([] {});
    EXPECT_EQ(listener.losses().size(), 1U);
}

}  // namespace
}  // namespace corvane
