#include <optional>

#include "platform/macos/DispatchSerialQueue.h"
#include "platform/macos/MacClock.h"
#include "tests/platform/SerialQueueContract.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class DispatchRig {
public:
    SerialQueue& queue() { return queue_; }

    template <typename T>
    bool await(const Notes<T>& notes, std::size_t count) {
        const BootTime end = time_.bootTime() + testPatience;
        time_.settle();
        while (notes.size() < count && time_.bootTime() < end) {
            time_.advance(1ms);
        }
        return notes.size() >= count;
    }

private:
    VirtualTime time_;
    FakeDispatch dispatch_{time_};
    DispatchSerialQueue queue_{"test"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Dispatch, SerialQueueContract, DispatchRig);

class DispatchSerialQueueTest : public testing::Test {
protected:
    SerialQueue::Work note(const std::string& what) {
        return [this, what] { notes.push_back(what); };
    }

    VirtualTime time;
    FakeDispatch dispatch{time};
    std::vector<std::string> notes;
};

TEST_F(DispatchSerialQueueTest, LetsADueTimerRunAheadOfABacklogOfWork) {
    constexpr int backlog = 100;
    DispatchSerialQueue queue("test");
    int done = 0;
    int doneWhenDue = backlog;
    const auto timer = queue.after(0ms, [&] { doneWhenDue = done; });
    for (int i = 0; i < backlog; ++i) {
        queue.async([&] { ++done; });
    }
    time.settle();
    EXPECT_LE(doneWhenDue, 2);
    EXPECT_EQ(done, backlog);
}

TEST_F(DispatchSerialQueueTest, FiresAsTheComputerWakesUpFromASleepThatATimerFellInto) {
    DispatchSerialQueue queue("test");
    const BootTime start = queue.bootTime();
    std::vector<Duration> firedAt;
    const auto once = queue.after(10s, [&] { firedAt.push_back(queue.bootTime() - start); });
    time.advance(1s);
    dispatch.suspend(60s);
    time.advance(1ms);
    EXPECT_THAT(firedAt, ElementsAre(61s));
}

TEST_F(DispatchSerialQueueTest, CountsATimersTimeThroughASleep) {
    DispatchSerialQueue queue("test");
    const BootTime start = queue.bootTime();
    std::vector<Duration> firedAt;
    const auto often = queue.every(10s, 10s, [&] { firedAt.push_back(queue.bootTime() - start); });
    time.advance(1s);
    dispatch.suspend(5s);
    time.advance(24s);
    EXPECT_THAT(firedAt, ElementsAre(10s, 20s, 30s));
}

TEST_F(DispatchSerialQueueTest, LetsNoClockThatIsSetMoveATimer) {
    DispatchSerialQueue queue("test");
    const BootTime start = queue.bootTime();
    std::vector<Duration> firedAt;
    const auto timer = queue.every(10s, 10s, [&] { firedAt.push_back(queue.bootTime() - start); });
    time.advance(1s);
    time.setWallTime(time.wallTime() + 24h);
    time.advance(14s);
    time.setWallTime(time.wallTime() - 48h);
    time.advance(15s);
    EXPECT_THAT(firedAt, ElementsAre(10s, 20s, 30s));
}

TEST_F(DispatchSerialQueueTest, MovesATimerOfTheCalendarWithTheClock) {
    DispatchSerialQueue queue("test");
    const WallTime due = queue.wallTime() + 1h;
    const auto timer = queue.at(due, note("reached"));
    time.setWallTime(due - 10s);
    time.advance(9s);
    EXPECT_TRUE(notes.empty());
    time.setWallTime(due - 2h);
    time.advance(1h);
    EXPECT_TRUE(notes.empty());
    time.advance(1h);
    EXPECT_THAT(notes, ElementsAre("reached"));
}

TEST_F(DispatchSerialQueueTest, EndsACalendarTimersWaitAsTheComputerWakesUp) {
    DispatchSerialQueue queue("test");
    const auto timer = queue.at(queue.wallTime() + 1h, note("reached"));
    time.advance(1s);
    dispatch.suspend(2h);
    time.advance(1ms);
    EXPECT_THAT(notes, ElementsAre("reached"));
}

TEST_F(DispatchSerialQueueTest, DropsWhatWaitsAsItEnds) {
    std::optional<DispatchSerialQueue> queue;
    queue.emplace("test");
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> watched = held;
    queue->async([&, held = std::move(held)] { notes.emplace_back("waiting"); });
    queue.reset();
    time.advance(1s);
    EXPECT_TRUE(notes.empty());
    EXPECT_TRUE(watched.expired());
}

TEST_F(DispatchSerialQueueTest, TakesNothingFromTheDestructorOfWorkThatIsDropped) {
    std::optional<DispatchSerialQueue> queue;
    queue.emplace("test");
    const auto handOver = [this, ending = &*queue](void*) { ending->async(note("late")); };
    queue->async([held = std::shared_ptr<void>(nullptr, handOver)] {});
    queue.reset();
    time.advance(1s);
    EXPECT_TRUE(notes.empty());
}

TEST_F(DispatchSerialQueueTest, RunsTheMainThreadsWorkAndTimersOnTheMainThread) {
    DispatchSerialQueue queue(DispatchSerialQueue::OfMainThread{});
    std::vector<bool> onMain;
    queue.async([&] { onMain.push_back(dispatch.isOnMainThread()); });
    const auto timer = queue.after(1s, [&] { onMain.push_back(dispatch.isOnMainThread()); });
    DispatchSerialQueue other("test");
    other.async([&] { onMain.push_back(dispatch.isOnMainThread()); });
    EXPECT_TRUE(onMain.empty()) << "nothing runs before the loop does";
    time.advance(2s);
    EXPECT_THAT(onMain, ElementsAre(true, false, true));
}

TEST_F(DispatchSerialQueueTest, DropsWhatWaitsForTheMainThreadAsItEnds) {
    std::optional<DispatchSerialQueue> queue;
    queue.emplace(DispatchSerialQueue::OfMainThread{});
    queue->async(note("waiting"));
    auto timer = queue->after(0ms, note("due"));
    timer.reset();
    queue.reset();
    time.advance(1s);
    EXPECT_TRUE(notes.empty());
}

TEST_F(DispatchSerialQueueTest, MayBeEnteredFromTheMainThreadsWork) {
    DispatchSerialQueue mainQueue(DispatchSerialQueue::OfMainThread{});
    DispatchSerialQueue queue("test");
    mainQueue.async([&] {
        queue.async(note("before"));
        queue.sync(note("sync"));
        queue.syncAhead(note("ahead"));
        notes.emplace_back("after");
    });
    time.settle();
    EXPECT_THAT(notes, ElementsAre("before", "sync", "ahead", "after"));
}

TEST_F(DispatchSerialQueueTest, ReadsTheKernelsClocksWhateverTheirTicks) {
    // Ticks of 24 MHz.
    dispatch.setTimebase(125, 3);
    constexpr Duration tick = 42ns;
    const BootTime before = macBootTime();
    EXPECT_NEAR(static_cast<double>((before - time.bootTime()).count()), 0.0, tick.count());
    dispatch.suspend(1h);
    EXPECT_NEAR(static_cast<double>((macBootTime() - before).count()), Duration(1h).count(), tick.count());
    const BootTime asleep = macBootTime();
    macSleep(1s);
    EXPECT_GE(macBootTime() - asleep, 1s);
    EXPECT_LE(macBootTime() - asleep, 1s + 2 * tick);
    EXPECT_EQ(macWallTime(), time.wallTime());
}

}  // namespace
}  // namespace corvane
