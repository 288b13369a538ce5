#include <atomic>
#include <future>
#include <memory>
#include <optional>

#include <pthread.h>

#include "platform/linux/AsioSerialQueue.h"
#include "tests/platform/SerialQueueContract.h"
#include "tests/platform/simulated/AllocationCount.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

class AsioRig {
public:
    SerialQueue& queue() { return queue_; }

    template <typename T>
    bool await(const Notes<T>& notes, std::size_t count) {
        return notes.waitFor(count);
    }

private:
    AsioSerialQueue queue_{"test"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Asio, SerialQueueContract, AsioRig);

TEST(AsioSerialQueue, LetsADueTimerRunAheadOfABacklogOfWork) {
    constexpr int backlog = 5000;
    AsioSerialQueue queue("test");
    std::promise<int> doneWhenDue;
    std::unique_ptr<Timer> timer;
    int done = 0;
    queue.sync([&] {
        for (int i = 0; i < backlog; ++i) {
            queue.async([&] { ++done; });
        }
        timer = queue.after(0ms, [&] { doneWhenDue.set_value(done); });
    });
    EXPECT_LE(doneWhenDue.get_future().get(), 2);
    queue.sync([&] { timer.reset(); });
    EXPECT_EQ(done, backlog);
}

TEST(AsioSerialQueue, RunsOnePieceOfWorkAtATimeWhoeverHandsItOver) {
    constexpr int threads = 4;
    constexpr int pieces = 500;
    AsioSerialQueue queue("test");
    std::atomic<int> running = 0;
    int overlaps = 0;
    int done = 0;
    std::vector<std::thread> callers;
    for (int i = 0; i < threads; ++i) {
        callers.emplace_back([&] {
            for (int piece = 0; piece < pieces; ++piece) {
                queue.async([&] {
                    overlaps += ++running == 1 ? 0 : 1;
                    ++done;
                    --running;
                });
            }
        });
    }
    for (std::thread& caller : callers) {
        caller.join();
    }
    queue.sync([] {});
    EXPECT_EQ(done, threads * pieces);
    EXPECT_EQ(overlaps, 0);
}

TEST(AsioSerialQueue, RunsARepeatingTimerWithoutAskingForMemory) {
    constexpr int warmUp = 10;
    constexpr int measured = 100;
    AsioSerialQueue queue("test");
    std::promise<std::size_t> allocations;
    std::unique_ptr<Timer> timer;
    std::size_t before = 0;
    int runs = 0;
    queue.sync([&] {
        timer = queue.every(1ms, 1ms, [&] {
            ++runs;
            if (runs == warmUp) {
                before = allocationCount();
            } else if (runs == warmUp + measured) {
                allocations.set_value(allocationCount() - before);
            }
        });
    });
    EXPECT_EQ(allocations.get_future().get(), 0U);
    queue.sync([&] { timer.reset(); });
}

TEST(AsioSerialQueue, FinishesTheWorkUnderWayAndLetsGoOfWhatWaitsWhenItEnds) {
    std::optional<AsioSerialQueue> queue;
    queue.emplace("test");
    std::promise<void> started;
    bool finished = false;
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> watched = held;
    // Not by way of `queue`, which is written to while the work runs.
    queue->async([&, &running = *queue] {
        started.set_value();
        running.sleep(20ms);
        finished = true;
    });
    queue->async([held = std::move(held)] {});
    started.get_future().wait();
    queue.reset();
    EXPECT_TRUE(finished);
    EXPECT_TRUE(watched.expired());
}

TEST(AsioSerialQueue, NamesItsThreadByTheLabelAsFarAsTheSystemTakesIt) {
    AsioSerialQueue queue("de.tavrin.corvane.queue");
    char name[16] = {};
    queue.sync([&] { pthread_getname_np(pthread_self(), name, sizeof name); });
    EXPECT_STREQ(name, "de.tavrin.corva");
}

TEST(AsioSerialQueue, TellsTheTimeOfDay) {
    const AsioSerialQueue queue("test");
    const WallTime before = std::chrono::system_clock::now();
    const WallTime told = queue.wallTime();
    EXPECT_LE(before, told);
    EXPECT_LE(told, std::chrono::system_clock::now());
}

}  // namespace
}  // namespace corvane
