#include <string>
#include <vector>

#include <IOKit/IOMessage.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/SystemPowerObservers.h"
#include "tests/platform/macos/fakes/IOKit/FakeSystemPower.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SystemPowerTest : public testing::Test {
protected:
    std::function<void()> note(const std::string& what) {
        return [this, what] {
            EXPECT_TRUE(dispatch.isOnMainThread());
            notes.push_back(what);
        };
    }

    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeSystemPower power;
    std::vector<std::string> notes;
};

TEST_F(SystemPowerTest, IsReadyForSleepOnceItsWorkIsDone) {
    SystemPowerSuspendObserver observer;
    observer.observe(note("before"), note("after"));
    EXPECT_TRUE(power.announceSleep());
    EXPECT_THAT(notes, ElementsAre("before"));
    power.announceWake();
    EXPECT_THAT(notes, ElementsAre("before", "after"));
}

TEST_F(SystemPowerTest, HoldsTheSleepUpUntilItsWorkIsDone) {
    SystemPowerSuspendObserver observer;
    bool isReadyTooEarly = true;
    observer.observe([&] { isReadyTooEarly = power.isAllReady(); }, [] {});
    EXPECT_TRUE(power.announceSleep());
    EXPECT_FALSE(isReadyTooEarly);
}

TEST_F(SystemPowerTest, NeverVetoesASleepAndDoesNothingBeforeItIsDecided) {
    SystemPowerSuspendObserver observer;
    observer.observe(note("before"), note("after"));
    EXPECT_TRUE(power.askToSleep());
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SystemPowerTest, PassesOverOtherMessages) {
    SystemPowerSuspendObserver observer;
    observer.observe(note("before"), note("after"));
    power.announce(iokit_common_msg(0x290));
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SystemPowerTest, TellsTheApplicationOfResumesAlone) {
    SystemPowerResumeObserver observer;
    observer.observe(note("resumed"));
    EXPECT_TRUE(power.askToSleep());
    EXPECT_TRUE(power.announceSleep()) << "the sleep must not wait for it";
    EXPECT_THAT(notes, IsEmpty());
    power.announceWake();
    power.announceWake();
    EXPECT_THAT(notes, ElementsAre("resumed", "resumed"));
}

TEST_F(SystemPowerTest, HearsNothingAfterItsEnd) {
    {
        SystemPowerResumeObserver observer;
        observer.observe(note("resumed"));
    }
    power.announceWake();
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SystemPowerTest, LivesWithoutNotices) {
    power.refuse();
    SystemPowerSuspendObserver observer;
    observer.observe(note("before"), note("after"));
    EXPECT_TRUE(power.announceSleep());
    power.announceWake();
    EXPECT_THAT(notes, IsEmpty());
}

}  // namespace
}  // namespace corvane
