#include <chrono>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/desktop/MacSingleInstance.h"
#include "platform/simulated/RecordingLog.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/macos/fakes/CoreFoundation/FakeMessagePorts.h"
#include "tests/platform/macos/fakes/Foundation/FakeAppleEvents.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* portName = "de.tavrin.corvane.open";

class MacSingleInstanceTest : public testing::Test {
protected:
    Start claim() {
        return instance->claim([this] { ++requests; });
    }

    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeMessagePorts ports;
    FakeAppleEvents events;
    RecordingLog log;
    std::unique_ptr<MacSingleInstance> instance =
        std::make_unique<MacSingleInstance>(dispatch.mainQueue(), log, 0ms);
    int requests = 0;
};

TEST_F(MacSingleInstanceTest, IsTheFirstWhereThereIsNoOther) {
    EXPECT_EQ(claim(), Start{});
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(MacSingleInstanceTest, HearsOfEachLaterStartAndAnswersIt) {
    static_cast<void>(claim());
    EXPECT_EQ(requests, 0);
    EXPECT_TRUE(ports.request(portName));
    EXPECT_TRUE(ports.request(portName));
    EXPECT_EQ(requests, 2);
}

TEST_F(MacSingleInstanceTest, IsTheSecondWhereAnotherAnswers) {
    ports.occupy(portName, FakeMessagePorts::Other::answers);
    EXPECT_EQ(claim(), (Start{.role = StartRole::second, .error = {}}));
    EXPECT_EQ(ports.sent(), 1);
}

TEST_F(MacSingleInstanceTest, SaysSoWhenTheFirstDoesNotAnswer) {
    ports.occupy(portName, FakeMessagePorts::Other::hangs);
    EXPECT_EQ(claim(), (Start{.role = StartRole::unanswered,
                              .error = "Corvane is already running but does not answer."}));
}

TEST_F(MacSingleInstanceTest, TakesThePlaceOfAFirstThatEndsMeanwhile) {
    ports.occupy(portName, FakeMessagePorts::Other::ends);
    instance = std::make_unique<MacSingleInstance>(dispatch.mainQueue(), log, 1s);
    EXPECT_EQ(claim(), Start{});
    EXPECT_TRUE(ports.request(portName));
}

TEST_F(MacSingleInstanceTest, IsTheFirstWhereThereIsNoWayToFindOut) {
    ports.breakDown();
    EXPECT_EQ(claim(), Start{});
    EXPECT_THAT(log.lines(), ElementsAre("Other instances go unnoticed: the system gives no message port"));
}

TEST_F(MacSingleInstanceTest, LeavesThePlaceToTheNextAtItsEnd) {
    static_cast<void>(claim());
    instance.reset();
    EXPECT_FALSE(ports.request(portName));
    instance = std::make_unique<MacSingleInstance>(dispatch.mainQueue(), log, 0ms);
    EXPECT_EQ(claim(), Start{});
    EXPECT_EQ(requests, 0);
}

TEST_F(MacSingleInstanceTest, HearsOfTheStartsThatTheSystemKeepsFromItOnceItIsLaunched) {
    static_cast<void>(claim());
    // AppKit has its own handler until then.
    EXPECT_FALSE(events.reopen());
    events.finishLaunching();
    time.settle();
    EXPECT_TRUE(events.reopen());
    EXPECT_EQ(requests, 1);
}

TEST_F(MacSingleInstanceTest, HearsOfNoneOfThemAfterItsEnd) {
    static_cast<void>(claim());
    events.finishLaunching();
    time.settle();
    instance.reset();
    EXPECT_FALSE(events.reopen());
}

TEST_F(MacSingleInstanceTest, MayEndBeforeTheApplicationIsLaunched) {
    static_cast<void>(claim());
    events.finishLaunching();
    instance.reset();
    time.settle();
    EXPECT_FALSE(events.reopen());
}

}  // namespace
}  // namespace corvane
