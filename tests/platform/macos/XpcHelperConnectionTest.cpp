// The application's and the helper's ends of XPC, with a scripted helper behind the listener.

#include <cmath>
#include <memory>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/HelperCalls.h"
#include "platform/RequestLimiter.h"
#include "platform/macos/XpcHelperListener.h"
#include "tests/platform/macos/XpcClient.h"
#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpc.h"
#include "tests/support/ScriptedHelper.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* tooLate = "failed: The helper did not answer in time.";
constexpr const char* tooMany = "failed: Too many requests wait for the helper's answers.";

class XpcHelperConnectionTest : public testing::Test, private HelperListenerDelegate {
protected:
    XpcHelperConnectionTest() {
        xpc.install(service, [this] { startHelper(); });
    }

    void startHelper() {
        ++launches;
        listener.emplace();
        EXPECT_EQ(listener->resume(*this), std::nullopt);
    }

    /// Its process ends without a word.
    void killHelper() {
        xpc.kill(service);
        listener.reset();
    }

    void sendKept(const StatusRecord& status = {}) {
        for (const auto& reply : helper->takeKept()) {
            reply(status);
        }
    }

    const std::string service{FanHelperProtocol::serviceName};
    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeXpc xpc;
    std::shared_ptr<ScriptedHelper> helper = std::make_shared<ScriptedHelper>();
    std::optional<XpcHelperListener> listener;
    int launches = 0;
    bool isRefusing = false;

private:
    std::shared_ptr<FanHelperProtocol> acceptConnection() override {
        EXPECT_FALSE(dispatch.isOnMainThread());
        return isRefusing ? nullptr : helper;
    }
};

TEST_F(XpcHelperConnectionTest, CarriesTheFiveMessagesAndTheirRepliesInOrder) {
    XpcClient client;
    client.ping();
    client.status();
    client.setFanFloor(42.9);
    client.stopBoost();
    client.setLidStayAwake(true);
    client.setLidStayAwake(false);
    EXPECT_THAT(client.takeTold(), IsEmpty()) << "nothing comes from inside a call";
    time.settle();
    EXPECT_THAT(client.takeTold(),
                ElementsAre("ok: pong", "status of 0", "ok: floor", "no: stopped", "ok: lid", "ok: lid"));
    EXPECT_THAT(helper->calls().all(),
                ElementsAre("ping", "status", "floor 42.9", "stop", "lid true", "lid false"));
    EXPECT_EQ(launches, 1) << "the first call started it";
}

TEST_F(XpcHelperConnectionTest, CarriesRealsThatAreNotFinite) {
    XpcClient client;
    for (const double percent : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        client.setFanFloor(percent);
    }
    time.settle();
    EXPECT_THAT(helper->calls().all(), ElementsAre("floor nan", "floor inf", "floor -inf"));
}

TEST_F(XpcHelperConnectionTest, CarriesTheWholeStatus) {
    helper->keepReplies();
    XpcClient client;
    client.status();
    time.settle();
    StatusRecord fan;
    fan.set(StatusKey::currentRPM, 1200);
    StatusRecord sent;
    sent.set(StatusKey::fans, std::vector<StatusRecord>{fan});
    sent.set(StatusKey::cpuTemp, 42.0);
    sent.set(StatusKey::isBoosted, true);
    sent.set(StatusKey::tempSensorCount, 1);
    sendKept(sent);
    time.settle();
    EXPECT_THAT(client.takeTold(), ElementsAre("status of 4"));
    EXPECT_THAT(client.last.get<double>(StatusKey::cpuTemp), testing::Pointee(42.0));
    EXPECT_THAT(client.last.get<bool>(StatusKey::isBoosted), testing::Pointee(true));
    EXPECT_THAT(client.last.get<std::int32_t>(StatusKey::tempSensorCount), testing::Pointee(1));
    const auto* fans = client.last.get<std::vector<StatusRecord>>(StatusKey::fans);
    ASSERT_THAT(fans, testing::Pointee(testing::SizeIs(1)));
    EXPECT_THAT(fans->front().get<std::int32_t>(StatusKey::currentRPM), testing::Pointee(1200));
}

TEST_F(XpcHelperConnectionTest, IsInvalidatedOnceWithoutAHelperAndThenKeepsSilent) {
    xpc.remove(service);
    XpcClient client;
    client.ping();
    client.status();
    time.settle();
    client.ping();
    time.advance(10s);
    EXPECT_THAT(client.takeTold(), ElementsAre("invalidated"));
}

TEST_F(XpcHelperConnectionTest, IsInterruptedOnceForEachHelperThatGoesAndStartsTheNext) {
    XpcClient client;
    for (int round = 0; round < 3; ++round) {
        client.ping();
        time.settle();
        killHelper();
        time.settle();
    }
    EXPECT_THAT(client.takeTold(),
                ElementsAre("ok: pong", "interrupted", "ok: pong", "interrupted", "ok: pong", "interrupted"));
    EXPECT_EQ(launches, 3);
}

TEST_F(XpcHelperConnectionTest, LosesTheCallsUnderWaySilentlyWhenTheHelperGoes) {
    helper->keepReplies();
    XpcClient client;
    client.status();
    client.status();
    time.settle();
    killHelper();
    sendKept();
    time.settle();
    client.ping();
    time.advance(10s);
    EXPECT_THAT(client.takeTold(), ElementsAre("interrupted", "ok: pong"));
}

TEST_F(XpcHelperConnectionTest, IsInterruptedWhenTheListenerEndsWithCallsUnderWay) {
    helper->keepReplies();
    XpcClient client;
    client.status();
    time.settle();
    listener.reset();
    EXPECT_EQ(helper.use_count(), 1) << "the transport has let go of it";
    sendKept();
    time.advance(10s);
    EXPECT_THAT(client.takeTold(), ElementsAre("interrupted"));
}

TEST_F(XpcHelperConnectionTest, ReportsEachCallThatStaysUnansweredAfterFiveSeconds) {
    XpcClient client;
    xpc.setHung(true);
    client.status();
    client.ping();
    time.advance(4900ms);
    EXPECT_THAT(client.takeTold(), IsEmpty());
    time.advance(100ms);
    EXPECT_THAT(client.takeTold(), ElementsAre(tooLate, tooLate));
}

TEST_F(XpcHelperConnectionTest, HearsAReplyThatCameDuringASleepBeforeItsCallCountsAsLate) {
    helper->keepReplies();
    XpcClient client;
    client.status();
    time.settle();
    sendKept();
    dispatch.suspend(1h);
    time.settle();
    EXPECT_THAT(client.takeTold(), ElementsAre("status of 0"));
}

TEST_F(XpcHelperConnectionTest, IgnoresAReplyThatComesTooLate) {
    helper->keepReplies();
    XpcClient client;
    client.status();
    time.advance(5s);
    sendKept();
    time.settle();
    EXPECT_THAT(client.takeTold(), ElementsAre(tooLate));
}

TEST_F(XpcHelperConnectionTest, FailsCallsBeyond64AtOnce) {
    helper->keepReplies();
    XpcClient client;
    for (std::size_t i = 0; i < HelperCalls::maxUnderWay + 2; ++i) {
        client.status();
    }
    time.settle();
    EXPECT_THAT(client.takeTold(), ElementsAre(tooMany, tooMany));
    sendKept();
    time.settle();
    EXPECT_EQ(client.takeTold().size(), HelperCalls::maxUnderWay);
    client.ping();
    time.settle();
    EXPECT_THAT(client.takeTold(), ElementsAre("ok: pong")) << "there is room again";
}

TEST_F(XpcHelperConnectionTest, GoesSilentlyWithCallsUnderWay) {
    helper->keepReplies();
    XpcClient client;
    client.status();
    client.ping();
    client.status();
    time.settle();
    EXPECT_THAT(client.takeTold(), ElementsAre("ok: pong"));
    client.disconnect();
    sendKept();
    time.advance(10s);
    EXPECT_THAT(client.takeTold(), IsEmpty());
    EXPECT_EQ(xpc.served(service), 0U) << "the helper's end is gone, too";
}

TEST_F(XpcHelperConnectionTest, GoesSilentlyWithNewsOnItsWay) {
    XpcClient client;
    client.ping();
    time.settle();
    client.takeTold();
    killHelper();
    client.disconnect();
    time.advance(10s);
    EXPECT_THAT(client.takeTold(), IsEmpty());
}

TEST_F(XpcHelperConnectionTest, MayBeDestroyedByAReplyWithOthersOnTheirWay) {
    XpcClient client;
    client.afterEachNote = [&] { client.disconnect(); };
    for (int i = 0; i < 5; ++i) {
        client.ping();
    }
    time.advance(10s);
    EXPECT_THAT(client.takeTold(), ElementsAre("ok: pong"));
}

TEST_F(XpcHelperConnectionTest, MayBeDestroyedByEachOfItsHandlers) {
    XpcClient client;
    client.afterEachNote = [&] { client.disconnect(); };
    xpc.setHung(true);
    client.ping();
    time.advance(10s);
    EXPECT_THAT(client.takeTold(), ElementsAre(tooLate));
    xpc.setHung(false);

    client.connect();
    startHelper();
    client.helper().pingWithReply([](bool /*ok*/, const std::string& /*text*/) {});
    time.settle();
    killHelper();
    time.settle();
    EXPECT_THAT(client.takeTold(), ElementsAre("interrupted"));

    xpc.remove(service);
    client.connect();
    client.ping();
    time.settle();
    EXPECT_THAT(client.takeTold(), ElementsAre("invalidated"));
}

TEST_F(XpcHelperConnectionTest, ServesSeveralConnections) {
    XpcClient one;
    one.ping();
    time.settle();
    {
        XpcClient other;
        other.setFanFloor(10.0);
        time.settle();
        EXPECT_THAT(other.takeTold(), ElementsAre("ok: floor"));
        EXPECT_EQ(xpc.served(service), 2U);
    }
    time.settle();
    EXPECT_EQ(xpc.served(service), 1U);
    one.ping();
    time.settle();
    EXPECT_THAT(one.takeTold(), ElementsAre("ok: pong", "ok: pong"));
}

TEST_F(XpcHelperConnectionTest, RefusesAConnectionThatTheDelegateRefuses) {
    isRefusing = true;
    XpcClient client;
    client.ping();
    time.advance(10s);
    EXPECT_THAT(client.takeTold(), ElementsAre("interrupted"));
    EXPECT_THAT(helper->calls().all(), IsEmpty());
    EXPECT_EQ(xpc.served(service), 0U);
}

TEST_F(XpcHelperConnectionTest, BoundsTheRequestsThatACallerHasWaiting) {
    helper->keepReplies();
    XpcClient greedy;
    XpcClient moreGreedy;
    constexpr std::size_t half = RequestLimiter::maxWaitingPerCaller / 2;
    for (std::size_t i = 0; i < half; ++i) {
        greedy.status();
        moreGreedy.status();
    }
    greedy.status();
    time.settle();
    EXPECT_EQ(helper->kept().size(), RequestLimiter::maxWaitingPerCaller);
    const std::vector<std::string> refused = greedy.takeTold();
    EXPECT_EQ(refused.size(), 1U);
    EXPECT_THAT(refused, Each(testing::StartsWith("failed: ")));
    sendKept();
    time.settle();
    EXPECT_EQ(greedy.takeTold().size(), half) << "those that were admitted are answered";
    greedy.ping();
    time.settle();
    EXPECT_THAT(greedy.takeTold(), ElementsAre("ok: pong"));
}

TEST_F(XpcHelperConnectionTest, AnswersOtherCallersWhenOneHasAllItsRequestsWaiting) {
    helper->keepReplies();
    xpc.callFrom(1001);
    std::vector<std::unique_ptr<XpcClient>> ofOneProcess;
    for (std::size_t i = 0; i < RequestLimiter::maxWaitingPerCaller; ++i) {
        ofOneProcess.push_back(std::make_unique<XpcClient>());
        ofOneProcess.back()->status();
    }
    time.settle();
    ofOneProcess.front()->ping();
    xpc.callFrom(1002);
    XpcClient other;
    other.ping();
    time.settle();
    EXPECT_THAT(ofOneProcess.front()->takeTold(), ElementsAre(testing::StartsWith("failed: ")));
    EXPECT_THAT(other.takeTold(), ElementsAre("ok: pong"));
}

TEST_F(XpcHelperConnectionTest, LetsOtherCallersInWhenOneHasAllItsConnections) {
    xpc.callFrom(1001);
    std::vector<std::unique_ptr<XpcClient>> ofOneProcess;
    for (std::size_t i = 0; i < RequestLimiter::maxWaitingPerCaller + 1; ++i) {
        ofOneProcess.push_back(std::make_unique<XpcClient>());
        ofOneProcess.back()->ping();
    }
    xpc.callFrom(1002);
    XpcClient other;
    other.ping();
    time.settle();
    EXPECT_THAT(ofOneProcess.back()->takeTold(), ElementsAre("interrupted"));
    EXPECT_THAT(other.takeTold(), ElementsAre("ok: pong"));
    EXPECT_EQ(xpc.served(service), RequestLimiter::maxWaitingPerCaller + 1);
}

TEST_F(XpcHelperConnectionTest, BoundsTheConnectionsOfACaller) {
    std::vector<std::unique_ptr<XpcClient>> clients;
    for (std::size_t i = 0; i < RequestLimiter::maxWaitingPerCaller + 1; ++i) {
        clients.push_back(std::make_unique<XpcClient>());
        clients.back()->ping();
        time.settle();
    }
    EXPECT_EQ(xpc.served(service), RequestLimiter::maxWaitingPerCaller);
    EXPECT_THAT(clients.back()->takeTold(), ElementsAre("interrupted"));
    clients.front().reset();
    time.settle();
    clients.back()->ping();
    time.settle();
    EXPECT_THAT(clients.back()->takeTold(), ElementsAre("ok: pong")) << "there is room again";
}

}  // namespace
}  // namespace corvane
