#include <QEventLoop>
#include <filesystem>
#include <fstream>
#include <future>
#include <optional>
#include <sstream>
#include <thread>

#include "platform/linux/desktop/QtSerialQueue.h"
#include "tests/platform/SerialQueueContract.h"
#include "tests/support/QtThread.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

class QtRig {
public:
    SerialQueue& queue() { return *queue_; }

    template <typename T>
    bool await(const Notes<T>& notes, std::size_t count) {
        return notes.waitFor(count);
    }

private:
    std::optional<QtSerialQueue> queue_;
    QtThread thread_{[this] { queue_.emplace(); }, [this] { queue_.reset(); }};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, SerialQueueContract, QtRig);

class QtSerialQueueTest : public SerialQueueContract<QtRig> {};

TEST_F(QtSerialQueueTest, LetsADueTimerRunAheadOfABacklogOfWork) {
    constexpr int backlog = 5000;
    std::promise<int> doneWhenDue;
    int done = 0;
    queue().sync([&] {
        for (int i = 0; i < backlog; ++i) {
            queue().async([&] { ++done; });
        }
        timers.push_back(queue().after(0ms, [&] { doneWhenDue.set_value(done); }));
    });
    EXPECT_LE(doneWhenDue.get_future().get(), 2);
    queue().sync([] {});
    EXPECT_EQ(done, backlog);
}

TEST_F(QtSerialQueueTest, RunsAllWorkOnTheThreadThatMadeIt) {
    Notes<std::thread::id> threads;
    const auto noteThread = [&] { threads.add(std::this_thread::get_id()); };
    queue().async(noteThread);
    std::thread([&] { queue().sync(noteThread); }).join();
    queue().syncAhead(noteThread);
    after(1ms, noteThread);
    ASSERT_TRUE(threads.waitFor(4));
    // The last note is in, and its writer is done with it.
    queue().sync([] {});
    EXPECT_THAT(threads.all(), testing::Each(threads.all().front()));
    EXPECT_NE(threads.all().front(), std::this_thread::get_id());
}

TEST_F(QtSerialQueueTest, RunsOnePieceOfWorkAtATimeWhoeverHandsItOver) {
    constexpr int threads = 4;
    constexpr int pieces = 500;
    int done = 0;
    std::vector<std::thread> callers;
    for (int i = 0; i < threads; ++i) {
        callers.emplace_back([&] {
            for (int piece = 0; piece < pieces; ++piece) {
                queue().async([&] { ++done; });
            }
        });
    }
    for (std::thread& caller : callers) {
        caller.join();
    }
    queue().sync([] {});
    EXPECT_EQ(done, threads * pieces);
}

TEST_F(QtSerialQueueTest, LetsATimerDestroyAnotherThatIsDueAsWell) {
    queue().sync([this] {
        timers.push_back(queue().after(1ms, [this] {
            timers.at(1).reset();
            notes.add("first");
        }));
        timers.push_back(queue().after(1ms, note("second")));
        queue().sleep(10ms);
    });
    after(20ms, note("later"));
    ASSERT_TRUE(notes.waitFor(2));
    EXPECT_THAT(notes.all(), testing::ElementsAre("first", "later"));
}

TEST_F(QtSerialQueueTest, LetsTimersMakeTimersWithoutHoldingUpOtherWork) {
    std::function<void()> again = [&] {
        timers.clear();
        timers.push_back(queue().after(0ms, again));
    };
    queue().sync([&] { timers.push_back(queue().after(0ms, again)); });
    for (int i = 0; i < 100; ++i) {
        queue().sync(note("work"));
    }
    queue().sync([this] { timers.clear(); });
    EXPECT_EQ(notes.size(), 100U);
}

TEST_F(QtSerialQueueTest, GoesOnWhileItsWorkRunsAnEventLoop) {
    queue().async([this] {
        QEventLoop inner;
        queue().async(note("work"));
        timers.push_back(queue().after(5ms, [this, &inner] {
            notes.add("timer");
            inner.quit();
        }));
        inner.exec();
        notes.add("outer");
    });
    ASSERT_TRUE(notes.waitFor(3));
    EXPECT_THAT(notes.all(), testing::ElementsAre("work", "timer", "outer"));
}

TEST_F(QtSerialQueueTest, TellsTheTimeOfDay) {
    const WallTime before = std::chrono::system_clock::now();
    const WallTime told = queue().wallTime();
    EXPECT_LE(before, told);
    EXPECT_LE(told, std::chrono::system_clock::now());
}

/// What the kernel tells of each timer descriptor of this process.
std::vector<std::string> timerDescriptors() {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
        std::stringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        if (text.str().find("clockid") != std::string::npos) {
            found.push_back(text.str());
        }
    }
    return found;
}

TEST_F(QtSerialQueueTest, IsWokenByAbsoluteDeadlinesOnTheClockThatGoesOnDuringSuspendAndOnTheCalendar) {
    after(1h, [] {});
    after(2h, [] {});
    at(1h, [] {});
    at(2h, [] {});
    const auto deadline = [](const std::string& clock) {
        return testing::AllOf(testing::HasSubstr(clock), testing::HasSubstr("settime flags: 01\n"),
                              testing::HasSubstr("it_value: (35"));
    };
    EXPECT_THAT(timerDescriptors(),
                testing::UnorderedElementsAre(deadline("clockid: 7\n"), deadline("clockid: 0\n")))
        << "one for all timers of a clock, set to the earliest, in seconds";
}

TEST(QtSerialQueue, LetsGoOfWhatWaitsWhenItEnds) {
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> watched = held;
    std::optional<QtSerialQueue> queue;
    bool ran = false;
    {
        const QtThread thread(
            [&] {
                queue.emplace();
                queue->async([&] { ran = true; });
                queue->async([held = std::move(held)] {});
                queue.reset();
            },
            [] {});
    }
    EXPECT_FALSE(ran);
    EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace corvane
