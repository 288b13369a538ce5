#pragma once

// What every SerialQueue promises, as a suite that is run over each of them. A rig is made of:
//   SerialQueue& queue();
//   bool await(const Notes<T>& notes, std::size_t count);   lets time pass until there are that many

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/SerialQueue.h"
#include "tests/support/Notes.h"

namespace corvane {

template <typename Rig>
class SerialQueueContract : public testing::Test {
protected:
    ~SerialQueueContract() override {
        queue().sync([this] { timers.clear(); });
    }

    SerialQueue& queue() { return rig.queue(); }

    template <typename T>
    bool await(const Notes<T>& what, std::size_t count) {
        return rig.await(what, count);
    }

    /// Timers are made on their queue.
    void after(Duration delay, SerialQueue::Work work) {
        queue().sync([&] { timers.push_back(queue().after(delay, std::move(work))); });
    }
    /// From now, on the calendar.
    void at(Duration delay, SerialQueue::Work work) {
        queue().sync([&] { timers.push_back(queue().at(queue().wallTime() + delay, std::move(work))); });
    }
    void every(Duration first, Duration period, SerialQueue::Work work) {
        queue().sync([&] { timers.push_back(queue().every(first, period, std::move(work))); });
    }

    SerialQueue::Work note(const std::string& what) {
        return [this, what] { notes.add(what); };
    }

    Notes<std::string> notes;
    Notes<Duration> times;
    Rig rig;
    /// Of the queue.
    std::vector<std::unique_ptr<Timer>> timers;
};

TYPED_TEST_SUITE_P(SerialQueueContract);

TYPED_TEST_P(SerialQueueContract, RunsWorkInTheOrderItWasHandedOver) {
    std::vector<int> order;
    std::vector<int> expected;
    for (int i = 0; i < 1000; ++i) {
        expected.push_back(i);
        this->queue().async([&order, i] { order.push_back(i); });
    }
    this->queue().sync([] {});
    EXPECT_EQ(order, expected);
}

TYPED_TEST_P(SerialQueueContract, RunsSyncAfterEverythingHandedOverBefore) {
    this->queue().async([this] { this->queue().sleep(std::chrono::milliseconds(20)); });
    this->queue().async(this->note("before"));
    this->queue().sync(this->note("sync"));
    EXPECT_THAT(this->notes.all(), testing::ElementsAre("before", "sync"));
}

TYPED_TEST_P(SerialQueueContract, RunsSyncAheadOfABacklog) {
    constexpr int backlog = 400;
    std::atomic<bool> isAhead = false;
    int done = 0;
    int doneBefore = backlog;
    for (int i = 0; i < backlog; ++i) {
        // Slow until then, so that the backlog lasts for seconds.
        this->queue().async([&] {
            this->queue().sleep(std::chrono::milliseconds(isAhead ? 0 : 10));
            ++done;
        });
    }
    this->queue().syncAhead([&] {
        isAhead = true;
        doneBefore = done;
    });
    this->queue().sync([] {});
    EXPECT_LT(doneBefore, backlog);
    EXPECT_EQ(done, backlog) << "nothing is lost";
}

TYPED_TEST_P(SerialQueueContract, RunsWorkHandedOverByWorkBehindWhatIsWaiting) {
    this->queue().async([this] {
        this->notes.add("outer");
        this->queue().async(this->note("waiting"));
        this->queue().async(this->note("inner"));
    });
    ASSERT_TRUE(this->await(this->notes, 3));
    EXPECT_THAT(this->notes.all(), testing::ElementsAre("outer", "waiting", "inner"));
}

TYPED_TEST_P(SerialQueueContract, TakesWorkFromADestructorOfWork) {
    const auto handOver = [this](void*) { this->queue().async(this->note("from the destructor")); };
    this->queue().async([this, held = std::shared_ptr<void>(nullptr, handOver)] { this->notes.add("work"); });
    ASSERT_TRUE(this->await(this->notes, 2));
    EXPECT_THAT(this->notes.all(), testing::ElementsAre("work", "from the destructor"));
}

TYPED_TEST_P(SerialQueueContract, RunsTimersWhenTheyAreDueAndNotBefore) {
    using namespace std::chrono_literals;
    const BootTime start = this->queue().bootTime();
    const auto noteTime = [this, start] { this->times.add(this->queue().bootTime() - start); };
    this->queue().sync([&] {
        this->timers.push_back(this->queue().after(30ms, noteTime));
        this->timers.push_back(this->queue().after(30ms, this->note("late")));
        this->timers.push_back(this->queue().after(10ms, this->note("early")));
        this->timers.push_back(this->queue().after(0ms, this->note("now")));
    });
    ASSERT_TRUE(this->await(this->times, 1));
    ASSERT_TRUE(this->await(this->notes, 3));
    EXPECT_GE(this->times.all().front(), 30ms);
    EXPECT_THAT(this->notes.all(), testing::ElementsAre("now", "early", "late"));
}

TYPED_TEST_P(SerialQueueContract, DoesNotShiftTheNextRunAfterALateOne) {
    using namespace std::chrono_literals;
    static constexpr Duration period = 40ms;
    // Every second run is late by half a period; the one after it then comes less than a period later, which
    // a period counted from the run itself would never bring about. A busy machine may blur single runs.
    this->every(period - 5ms, 2 * period, [this] { this->queue().sleep(25ms); });
    this->every(period, period, [this, last = BootTime{}]() mutable {
        const BootTime now = this->queue().bootTime();
        if (last != BootTime{} && now - last < period - 10ms) {
            this->times.add(now - last);
        }
        last = now;
    });
    EXPECT_TRUE(this->await(this->times, 3));
}

TYPED_TEST_P(SerialQueueContract, MakesUpForMissedRunsByOne) {
    using namespace std::chrono_literals;
    static constexpr Duration period = 10ms;
    BootTime start{};
    Duration awake{};
    this->queue().sync([&] {
        start = this->queue().bootTime();
        this->timers.push_back(this->queue().every(
            0ms, period, [this, start] { this->times.add(this->queue().bootTime() - start); }));
        this->queue().sleep(205ms);
        awake = this->queue().bootTime() - start;
    });
    ASSERT_TRUE(this->await(this->times, 5));
    this->queue().sync([this] { this->timers.clear(); });
    const std::vector<Duration> runs = this->times.all();
    EXPECT_GE(runs.front(), awake);
    // One for all that were missed, then at most one for each period that has begun since.
    EXPECT_LE(static_cast<Duration::rep>(runs.size()), 1 + runs.back() / period - awake / period);
}

TYPED_TEST_P(SerialQueueContract, RunsWorkOnceWhenTheCalendarHasReachedItsTime) {
    using namespace std::chrono_literals;
    WallTime start{};
    this->queue().sync([&] {
        start = this->queue().wallTime();
        this->timers.push_back(this->queue().at(start + 30ms, this->note("late")));
        this->timers.push_back(this->queue().at(
            start + 10ms, [this, start] { this->times.add(this->queue().wallTime() - start); }));
    });
    ASSERT_TRUE(this->await(this->notes, 1));
    EXPECT_GE(this->queue().wallTime(), start + 30ms);
    ASSERT_EQ(this->times.size(), 1U);
    EXPECT_GE(this->times.all().front(), 10ms);
    this->after(20ms, this->note("still once"));
    ASSERT_TRUE(this->await(this->notes, 2));
    EXPECT_THAT(this->notes.all(), testing::ElementsAre("late", "still once"));
}

TYPED_TEST_P(SerialQueueContract, RunsWorkSoonWhoseTimeOnTheCalendarHasPassed) {
    using namespace std::chrono_literals;
    this->queue().sync([this] {
        this->timers.push_back(this->queue().at(WallTime(-1h), this->note("before the calendar began")));
        this->timers.push_back(this->queue().at(WallTime(), this->note("at its beginning")));
        this->timers.push_back(this->queue().at(this->queue().wallTime() - 1h, this->note("an hour ago")));
        this->notes.add("not yet");
    });
    ASSERT_TRUE(this->await(this->notes, 4));
    EXPECT_EQ(this->notes.all().front(), "not yet");
}

TYPED_TEST_P(SerialQueueContract, NeverRunsADestroyedTimerNotEvenOneThatIsDue) {
    using namespace std::chrono_literals;
    this->queue().sync([this] {
        auto once = this->queue().after(1ms, this->note("once"));
        auto often = this->queue().every(1ms, 1ms, this->note("often"));
        auto onDate = this->queue().at(this->queue().wallTime() + 1ms, this->note("on a date"));
        this->queue().sleep(10ms);
    });
    this->after(20ms, this->note("later"));
    ASSERT_TRUE(this->await(this->notes, 1));
    EXPECT_THAT(this->notes.all(), testing::ElementsAre("later"));
}

TYPED_TEST_P(SerialQueueContract, LetsATimerBeDestroyedByItsOwnWork) {
    using namespace std::chrono_literals;
    this->after(1ms, [this, held = std::string("what the work holds outlives it")] {
        this->timers.clear();
        this->notes.add(held);
    });
    ASSERT_TRUE(this->await(this->notes, 1));
    this->every(1ms, 1ms, [this, held = std::string("repeated")] {
        this->timers.clear();
        this->notes.add(held);
    });
    ASSERT_TRUE(this->await(this->notes, 2));
    this->at(1ms, [this, held = std::string("on a date")] {
        this->timers.clear();
        this->notes.add(held);
    });
    ASSERT_TRUE(this->await(this->notes, 3));
    this->after(20ms, this->note("later"));
    ASSERT_TRUE(this->await(this->notes, 4));
    EXPECT_THAT(this->notes.all(),
                testing::ElementsAre("what the work holds outlives it", "repeated", "on a date", "later"));
}

TYPED_TEST_P(SerialQueueContract, RunsNothingWhileItSleeps) {
    using namespace std::chrono_literals;
    this->queue().sync([this] {
        this->timers.push_back(this->queue().after(1ms, this->note("timer")));
        this->queue().async(this->note("work"));
        const BootTime before = this->queue().bootTime();
        this->queue().sleep(20ms);
        this->times.add(this->queue().bootTime() - before);
        this->notes.add("awake");
    });
    ASSERT_TRUE(this->await(this->notes, 3));
    EXPECT_EQ(this->notes.all().front(), "awake");
    EXPECT_GE(this->times.all().front(), 20ms);
}

REGISTER_TYPED_TEST_SUITE_P(SerialQueueContract, RunsWorkInTheOrderItWasHandedOver,
                            RunsSyncAfterEverythingHandedOverBefore, RunsSyncAheadOfABacklog,
                            RunsWorkHandedOverByWorkBehindWhatIsWaiting, TakesWorkFromADestructorOfWork,
                            RunsTimersWhenTheyAreDueAndNotBefore, DoesNotShiftTheNextRunAfterALateOne,
                            MakesUpForMissedRunsByOne, RunsWorkOnceWhenTheCalendarHasReachedItsTime,
                            RunsWorkSoonWhoseTimeOnTheCalendarHasPassed,
                            NeverRunsADestroyedTimerNotEvenOneThatIsDue, LetsATimerBeDestroyedByItsOwnWork,
                            RunsNothingWhileItSleeps);

}  // namespace corvane
