#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/simulated/VirtualTime.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class VirtualTimeTest : public testing::Test {
protected:
    [[nodiscard]] auto note(const std::string& what) {
        return [this, what] { notes.push_back(what); };
    }
    /// Notes how many milliseconds have passed.
    [[nodiscard]] auto noteTime() {
        return [this] { times.push_back((time.bootTime() - start) / 1ms); };
    }

    VirtualTime time;
    VirtualQueue queue{time};
    VirtualQueue other{time};
    const BootTime start = time.bootTime();
    std::vector<std::string> notes;
    std::vector<long> times;
};

TEST_F(VirtualTimeTest, NothingRunsAndNoTimePassesByItself) {
    queue.async(note("work"));
    const auto timer = queue.after(0ms, note("timer"));
    EXPECT_THAT(notes, IsEmpty());
    EXPECT_EQ(queue.bootTime(), start);
}

TEST_F(VirtualTimeTest, WorkRunsInTheOrderItWasHandedOver) {
    queue.async(note("first"));
    other.async(note("second"));
    queue.async(note("third"));
    time.settle();
    EXPECT_THAT(notes, ElementsAre("first", "second", "third"));
    EXPECT_EQ(time.bootTime(), start);
}

TEST_F(VirtualTimeTest, WorkHandedOverByWorkRunsAfterWhatIsAlreadyWaiting) {
    queue.async([&] {
        notes.emplace_back("outer");
        queue.async(note("inner"));
    });
    queue.async(note("waiting"));
    time.settle();
    EXPECT_THAT(notes, ElementsAre("outer", "waiting", "inner"));
}

TEST_F(VirtualTimeTest, TimersRunWhenTheyAreDueAndInOrder) {
    const auto late = queue.after(30ms, noteTime());
    const auto soon = other.after(10ms, noteTime());
    const auto between = queue.after(20ms, noteTime());
    time.advance(9ms);
    EXPECT_THAT(times, IsEmpty());
    time.advance(1ms);
    EXPECT_THAT(times, ElementsAre(10));
    time.advance(1s);
    EXPECT_THAT(times, ElementsAre(10, 20, 30));
    EXPECT_EQ(time.bootTime(), start + 1010ms);
}

TEST_F(VirtualTimeTest, ADestroyedTimerDoesNotRun) {
    auto once = queue.after(10ms, note("once"));
    auto often = queue.every(10ms, 10ms, note("often"));
    once.reset();
    time.advance(10ms);
    often.reset();
    time.advance(1s);
    EXPECT_THAT(notes, ElementsAre("often"));
}

TEST_F(VirtualTimeTest, ARepeatingTimerKeepsItsDeadlines) {
    const auto timer = queue.every(100ms, 400ms, noteTime());
    time.advance(2s);
    EXPECT_THAT(times, ElementsAre(100, 500, 900, 1300, 1700));
}

TEST_F(VirtualTimeTest, ALateRunDoesNotShiftTheNext) {
    const auto timer = queue.every(100ms, 100ms, [&] {
        noteTime()();
        if (times.size() == 1) {
            queue.sleep(30ms);
        }
    });
    const auto blocker = queue.after(190ms, [&] { queue.sleep(30ms); });
    time.advance(400ms);
    EXPECT_THAT(times, ElementsAre(100, 220, 300, 400));
}

TEST_F(VirtualTimeTest, RunsMissedByABlockedQueueAreMadeUpForByOne) {
    const auto timer = queue.every(100ms, 100ms, noteTime());
    queue.async([&] { queue.sleep(450ms); });
    time.advance(700ms);
    EXPECT_THAT(times, ElementsAre(450, 500, 600, 700));
}

TEST_F(VirtualTimeTest, RunsMissedDuringSuspendAreMadeUpForByOne) {
    const auto timer = queue.every(1s, 1s, noteTime());
    const auto once = queue.after(5s, note("once"));
    time.suspend(10min + 300ms);
    EXPECT_THAT(times, IsEmpty());
    EXPECT_EQ(queue.bootTime(), start + 10min + 300ms) << "boot time goes on";
    time.settle();
    EXPECT_THAT(times, ElementsAre(600300));
    EXPECT_THAT(notes, ElementsAre("once"));
    time.advance(700ms);
    EXPECT_THAT(times, ElementsAre(600300, 601000));
}

TEST_F(VirtualTimeTest, ATimerMayBeDestroyedByItsOwnWork) {
    std::unique_ptr<Timer> once;
    once = queue.after(1ms, [&] {
        once.reset();
        notes.emplace_back("once");
    });
    std::unique_ptr<Timer> often;
    int runs = 0;
    often = queue.every(1ms, 1ms, [&, kept = std::string("what the work holds outlives it")] {
        if (++runs == 3) {
            often.reset();
            notes.push_back(kept);
        }
    });
    time.advance(1s);
    EXPECT_EQ(runs, 3);
    EXPECT_THAT(notes, ElementsAre("once", "what the work holds outlives it"));
}

TEST_F(VirtualTimeTest, ATimerMayBeReplacedByItsOwnWork) {
    std::unique_ptr<Timer> timer;
    timer = queue.every(10ms, 10ms, [&] { timer = queue.after(5ms, noteTime()); });
    time.advance(1s);
    EXPECT_THAT(times, ElementsAre(15));
}

TEST_F(VirtualTimeTest, SyncRunsAfterWhatWasHandedOverBefore) {
    queue.async(note("before"));
    const auto later = queue.after(1ms, note("later"));
    other.async(note("elsewhere"));
    queue.sync(note("sync"));
    EXPECT_THAT(notes, ElementsAre("before", "sync"));
    EXPECT_EQ(time.bootTime(), start);
    time.advance(1ms);
    EXPECT_THAT(notes, ElementsAre("before", "sync", "elsewhere", "later"));
}

TEST_F(VirtualTimeTest, SyncOnAnotherQueueMayBeCalledFromWork) {
    queue.async([&] {
        other.sync(note("inside"));
        notes.emplace_back("after");
    });
    time.settle();
    EXPECT_THAT(notes, ElementsAre("inside", "after"));
}

TEST_F(VirtualTimeTest, SyncFromItsOwnWorkEndsTheProcess) {
    queue.async([&] { queue.sync([] {}); });
    EXPECT_DEATH(time.settle(), "waiting for its caller");
}

TEST_F(VirtualTimeTest, SleepBlocksOnlyItsOwnQueue) {
    const auto own = queue.after(10ms, note("own"));
    const auto foreign = other.after(20ms, note("foreign"));
    queue.async([&] {
        queue.async(note("handed over"));
        queue.sleep(100ms);
        notes.emplace_back("awake");
        noteTime()();
    });
    time.advance(50ms);
    EXPECT_THAT(notes, ElementsAre("foreign", "awake", "handed over", "own"));
    EXPECT_THAT(times, ElementsAre(100));
    EXPECT_EQ(time.bootTime(), start + 100ms) << "time does not go back";
}

TEST_F(VirtualTimeTest, QueuesMaySleepWithinEachOther) {
    queue.async([&] {
        queue.sleep(100ms);
        noteTime()();
    });
    const auto timer = other.after(50ms, [&] {
        other.sleep(20ms);
        noteTime()();
    });
    time.advance(200ms);
    EXPECT_THAT(times, ElementsAre(70, 100));
}

TEST_F(VirtualTimeTest, AQueueTakesItsWaitingWorkWithIt) {
    std::optional<VirtualQueue> shortLived;
    shortLived.emplace(time);
    shortLived->async(note("never"));
    shortLived.reset();
    time.advance(1s);
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(VirtualTimeTest, TheCalendarCanBeSetWithoutTouchingBootTime) {
    const WallTime before = queue.wallTime();
    const auto timer = queue.after(10s, note("due"));
    time.setWallTime(before - 24h);
    EXPECT_EQ(queue.wallTime(), before - 24h);
    EXPECT_EQ(queue.bootTime(), start);
    time.advance(10s);
    EXPECT_EQ(queue.wallTime(), before - 24h + 10s);
    EXPECT_THAT(notes, ElementsAre("due"));
}

TEST_F(VirtualTimeTest, TimersOnTheCalendarFollowItWhenItIsSet) {
    const auto wait = queue.at(queue.wallTime() + 60s, note("due"));
    time.advance(10s);
    time.setWallTime(queue.wallTime() - 100s);
    time.advance(149s);
    EXPECT_THAT(notes, IsEmpty());
    time.advance(1s);
    EXPECT_THAT(notes, ElementsAre("due"));

    const auto skipped = queue.at(queue.wallTime() + 60s, note("skipped to"));
    time.setWallTime(queue.wallTime() + 1h);
    time.settle();
    EXPECT_THAT(notes, ElementsAre("due", "skipped to"));
    time.setWallTime(queue.wallTime() - 2h);
    time.advance(3h);
    EXPECT_THAT(notes, ElementsAre("due", "skipped to")) << "once";
}

TEST_F(VirtualTimeTest, ATimerOnTheCalendarRunsAfterASuspendThatItFellInto) {
    const auto wait = queue.at(queue.wallTime() + 60s, note("due"));
    time.suspend(1h);
    EXPECT_THAT(notes, IsEmpty());
    time.settle();
    EXPECT_THAT(notes, ElementsAre("due"));
}

}  // namespace
}  // namespace corvane
