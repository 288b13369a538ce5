// The connection and a well-behaved helper behind the real listener, on a bus of their own.

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/HelperCalls.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/HelperClient.h"
#include "tests/support/ListenerThread.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/ScriptedHelper.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr const char* congested = "failed: The message bus does not take any messages.";
constexpr const char* tooMany = "failed: Too many requests wait for the helper's answers.";

/// More than a bus that has stopped takes in.
constexpr int manyRounds = 2000;

class DBusHelperConnectionTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
    }

    void startHelper() { listener.emplace(bus.address(), helper); }

    PrivateBus bus;
    std::shared_ptr<ScriptedHelper> helper = std::make_shared<ScriptedHelper>();
    std::optional<ListenerThread> listener;
};

TEST_F(DBusHelperConnectionTest, CarriesTheFiveMembersAndTheirRepliesInOrder) {
    startHelper();
    HelperClient client(bus.address());
    client.ping();
    client.status();
    client.setFanFloor(42.9);
    client.stopBoost();
    client.setLidStayAwake(true);
    client.setLidStayAwake(false);
    ASSERT_TRUE(client.told().waitFor(6));
    EXPECT_THAT(client.told().all(),
                ElementsAre("ok: pong", "status of 0", "ok: floor", "no: stopped", "ok: lid", "ok: lid"));
    EXPECT_THAT(helper->calls().all(),
                ElementsAre("ping", "status", "floor 42.9", "stop", "lid true", "lid false"));
}

TEST_F(DBusHelperConnectionTest, CarriesTheWholeStatus) {
    helper->keepReplies();
    startHelper();
    HelperClient client(bus.address());
    client.status();
    ASSERT_TRUE(helper->kept().waitFor(1));
    StatusRecord fan;
    fan.set(StatusKey::currentRPM, 1200);
    StatusRecord sent;
    sent.set(StatusKey::fans, std::vector<StatusRecord>{fan});
    sent.set(StatusKey::cpuTemp, 42.5);
    sent.set(StatusKey::isBoosted, true);
    helper->takeKept().front()(sent);
    ASSERT_TRUE(client.told().waitFor(1));
    const StatusRecord status = client.lastStatus();
    EXPECT_THAT(status.get<double>(StatusKey::cpuTemp), testing::Pointee(42.5));
    EXPECT_THAT(status.get<bool>(StatusKey::isBoosted), testing::Pointee(true));
    const auto* fans = status.get<std::vector<StatusRecord>>(StatusKey::fans);
    ASSERT_THAT(fans, testing::Pointee(testing::SizeIs(1)));
    EXPECT_THAT(fans->front().get<std::int32_t>(StatusKey::currentRPM), testing::Pointee(1200));
}

TEST_F(DBusHelperConnectionTest, IsInvalidatedOnceWithoutAHelperAndThenKeepsSilent) {
    HelperClient client(bus.address());
    client.ping();
    client.status();
    ASSERT_TRUE(client.told().waitFor(1));
    client.settle();
    client.ping();
    client.settle();
    EXPECT_THAT(client.told().all(), ElementsAre("invalidated"));
}

TEST_F(DBusHelperConnectionTest, IsInvalidatedOnceByABusThatCannotBeReached) {
    for (const char* address : {"unix:path=/nonexistent/bus", "nonsense"}) {
        const EnvironmentVariable session("DBUS_SESSION_BUS_ADDRESS", address);
        HelperClient client("session");
        client.ping();
        ASSERT_TRUE(client.told().waitFor(1));
        client.ping();
        client.settle();
        EXPECT_THAT(client.told().all(), ElementsAre("invalidated"));
    }
}

TEST_F(DBusHelperConnectionTest, IsInvalidatedOnceWhenTheBusGoesAwayWithCallsUnderWay) {
    helper->keepReplies();
    startHelper();
    HelperClient client(bus.address());
    client.status();
    client.status();
    ASSERT_TRUE(helper->kept().waitFor(2));
    bus.end();
    ASSERT_TRUE(client.told().waitFor(1));
    client.settle();
    client.ping();
    client.settle();
    EXPECT_THAT(client.told().all(), ElementsAre("invalidated"));
}

TEST_F(DBusHelperConnectionTest, TakesTheHelpersFirstStartForNoInterruption) {
    HelperClient client(bus.address());
    client.settle();
    startHelper();
    client.ping();
    ASSERT_TRUE(client.told().waitFor(1));
    EXPECT_THAT(client.told().all(), ElementsAre("ok: pong"));
}

TEST_F(DBusHelperConnectionTest, IsInterruptedOnceForEachHelperThatLeavesAndGoesOnWithTheNext) {
    HelperClient client(bus.address());
    client.settle();
    for (std::size_t i = 0; i < 3; ++i) {
        startHelper();
        client.ping();
        ASSERT_TRUE(client.told().waitFor(2 * i + 1));
        listener.reset();
        ASSERT_TRUE(client.told().waitFor(2 * i + 2));
    }
    EXPECT_THAT(client.told().all(),
                ElementsAre("ok: pong", "interrupted", "ok: pong", "interrupted", "ok: pong", "interrupted"));
}

TEST_F(DBusHelperConnectionTest, LosesTheCallsUnderWaySilentlyWhenTheHelperLeaves) {
    helper->keepReplies();
    startHelper();
    HelperClient client(bus.address());
    client.status();
    client.status();
    ASSERT_TRUE(helper->kept().waitFor(2));
    listener.reset();
    // Requests under way keep the helper's end of the bus open.
    helper->takeKept().clear();
    ASSERT_TRUE(client.told().waitFor(1));
    startHelper();
    client.ping();
    ASSERT_TRUE(client.told().waitFor(2));
    EXPECT_THAT(client.told().all(), ElementsAre("interrupted", "ok: pong"));
}

TEST_F(DBusHelperConnectionTest, FailsCallsBeyond64AtOnce) {
    helper->keepReplies();
    startHelper();
    HelperClient client(bus.address());
    for (std::size_t i = 0; i < HelperCalls::maxUnderWay + 2; ++i) {
        client.status();
    }
    ASSERT_TRUE(client.told().waitFor(2));
    EXPECT_THAT(client.told().all(), ElementsAre(tooMany, tooMany));
    ASSERT_TRUE(helper->kept().waitFor(HelperCalls::maxUnderWay));
    for (const auto& reply : helper->takeKept()) {
        reply({});
    }
    ASSERT_TRUE(client.told().waitFor(HelperCalls::maxUnderWay + 2));
    client.ping();
    ASSERT_TRUE(client.told().waitFor(HelperCalls::maxUnderWay + 3));
    EXPECT_EQ(client.told().all().back(), "ok: pong") << "there is room again";
}

TEST_F(DBusHelperConnectionTest, MayBeDestroyedByAReplyWithOthersOnTheirWay) {
    startHelper();
    HelperClient client(bus.address());
    client.afterEachNote([&] { client.disconnect(); });
    client.use([&](FanHelperProtocol& remote) {
        for (int i = 0; i < 5; ++i) {
            remote.pingWithReply([&](bool /*ok*/, const std::string& text) {
                client.disconnect();
                helper->pingWithReply([](bool /*ok*/, const std::string& /*text*/) {});
                EXPECT_EQ(text, "pong") << "what the reply holds outlives the connection";
            });
        }
    });
    ASSERT_TRUE(helper->calls().waitFor(6));
    client.settle();
    EXPECT_EQ(helper->calls().size(), 6U) << "one reply came, and said so to the helper";
    EXPECT_EQ(client.told().size(), 0U);
}

TEST_F(DBusHelperConnectionTest, MayBeDestroyedByEachOfItsHandlers) {
    HelperClient client(bus.address());
    client.afterEachNote([&] { client.disconnect(); });
    client.ping();
    ASSERT_TRUE(client.told().waitFor(1));

    startHelper();
    client.connect();
    client.settle();
    listener.reset();
    ASSERT_TRUE(client.told().waitFor(2));
    EXPECT_THAT(client.told().all(), ElementsAre("invalidated", "interrupted"));
}

TEST_F(DBusHelperConnectionTest, GoesSilentlyWithCallsUnderWay) {
    helper->keepReplies();
    startHelper();
    HelperClient client(bus.address());
    client.status();
    client.status();
    ASSERT_TRUE(helper->kept().waitFor(2));
    client.use([&](FanHelperProtocol& /*remote*/) { client.disconnect(); });
    for (const auto& reply : helper->takeKept()) {
        reply({});
    }
    client.connect();
    client.ping();
    ASSERT_TRUE(client.told().waitFor(1));
    EXPECT_THAT(client.told().all(), ElementsAre("ok: pong"));
}

TEST_F(DBusHelperConnectionTest, GoesSilentlyTogetherWithItsBusThreadAndCallsUnderWay) {
    helper->keepReplies();
    startHelper();
    for (int i = 0; i < 20; ++i) {
        HelperClient client(bus.address());
        client.status();
        client.ping();
    }
    HelperClient(bus.address()).ping();
    EXPECT_THAT(helper->calls().all(), testing::Not(testing::IsEmpty()));
}

TEST_F(DBusHelperConnectionTest, ReportsEachCallThatAFrozenBusHolds) {
    startHelper();
    HelperClient client(bus.address(), 50ms);
    client.settle();
    bus.freeze();
    for (int i = 0; i < 5; ++i) {
        client.status();
    }
    ASSERT_TRUE(client.told().waitFor(5));
    EXPECT_THAT(client.told().all(),
                ElementsAre(HelperClient::tooLate, HelperClient::tooLate, HelperClient::tooLate,
                            HelperClient::tooLate, HelperClient::tooLate));
    client.use([&](FanHelperProtocol& /*remote*/) { client.disconnect(); });
    bus.end();
}

TEST_F(DBusHelperConnectionTest, PilesUpNothingForABusThatTakesNothing) {
    startHelper();
    HelperClient client(bus.address(), 1ms);
    client.settle();
    bus.freeze();
    std::string last;
    for (int round = 0; round < manyRounds && last != congested; ++round) {
        for (std::size_t i = 0; i < HelperCalls::maxUnderWay; ++i) {
            client.ping();
        }
        ASSERT_TRUE(client.told().waitFor(HelperCalls::maxUnderWay));
        last = client.takeTold().back();
    }
    EXPECT_EQ(last, congested);
    bus.end();
}

TEST_F(DBusHelperConnectionTest, KeepsItsTimeAndGoesAtOnceWhileTheBusDoesNotLetItIn) {
    const EnvironmentVariable session("DBUS_SESSION_BUS_ADDRESS", bus.address().c_str());
    bus.freeze();
    HelperClient client("session", 50ms);
    client.ping();
    client.status();
    ASSERT_TRUE(client.told().waitFor(2));
    EXPECT_THAT(client.told().all(), ElementsAre(HelperClient::tooLate, HelperClient::tooLate));
    client.use([&](FanHelperProtocol& /*remote*/) { client.disconnect(); });
    // Lets the bus thread go, too.
    bus.end();
}

}  // namespace
}  // namespace corvane
