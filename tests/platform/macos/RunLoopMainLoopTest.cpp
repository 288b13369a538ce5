#include <gtest/gtest.h>

#include "platform/macos/RunLoopMainLoop.h"
#include "tests/platform/macos/HeldSignalsKept.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

class RunLoopMainLoopTest : public testing::Test {
protected:
    HeldSignalsKept heldSignals;
    VirtualTime time;
    FakeDispatch dispatch{time};
    /// What happens while the loop runs.
    VirtualQueue script{time};
};

TEST_F(RunLoopMainLoopTest, DeliversASignalThatWasHeldBeforeTheHandlerWasSetOnce) {
    RunLoopMainLoop loop;
    loop.holdTerminationSignals();
    dispatch.raise(SIGTERM);
    int handled = 0;
    loop.onTerminationSignal([&] {
        ++handled;
        loop.exit(0);
    });
    EXPECT_EQ(handled, 0) << "handlers run on the loop";
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(handled, 1);
}

TEST_F(RunLoopMainLoopTest, DeliversEachTerminationSignalOnTheMainThread) {
    RunLoopMainLoop loop;
    loop.holdTerminationSignals();
    int handled = 0;
    loop.onTerminationSignal([&] {
        EXPECT_TRUE(dispatch.isOnMainThread());
        if (++handled == 3) {
            loop.exit(0);
        }
    });
    const auto first = script.after(1s, [&] { dispatch.raise(SIGTERM); });
    const auto second = script.after(2s, [&] { dispatch.raise(SIGINT); });
    const auto third = script.after(3s, [&] { dispatch.raise(SIGHUP); });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(handled, 3);
}

TEST_F(RunLoopMainLoopTest, LosesNoSignalBetweenHoldingThemAndTheirSources) {
    RunLoopMainLoop loop;
    loop.holdTerminationSignals();
    int handled = 0;
    dispatch.raise(SIGINT);
    loop.onTerminationSignal([&] { ++handled; });
    dispatch.raise(SIGTERM);
    const auto end = script.after(1s, [&] { loop.exit(0); });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_GE(handled, 2);
}

TEST_F(RunLoopMainLoopTest, ReturnsTheFirstStatusItIsGiven) {
    RunLoopMainLoop loop;
    loop.exit(3);
    loop.exit(4);
    EXPECT_EQ(loop.run(), 3) << "also when the end was asked for before the loop ran";
}

TEST_F(RunLoopMainLoopTest, MayBeEndedFromAnyQueue) {
    RunLoopMainLoop loop;
    DispatchSerialQueue other("test");
    other.async([&] { loop.exit(5); });
    EXPECT_EQ(loop.run(), 5);
}

}  // namespace
}  // namespace corvane
