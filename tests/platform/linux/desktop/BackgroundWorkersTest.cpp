#include <future>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "platform/linux/desktop/BackgroundWorkers.h"
#include "tests/support/Notes.h"

namespace corvane {
namespace {

/// What hangs until it is let go; it may outlive the test.
class Hang {
public:
    std::function<void()> work() {
        return [state = state_] {
            state->begun.add(true);
            state->go.wait();
            state->ended.add(true);
        };
    }
    bool waitForBegun(std::size_t count) const { return state_->begun.waitFor(count); }
    std::size_t begun() const { return state_->begun.size(); }
    bool letGo(std::size_t count) {
        go_.set_value();
        return state_->ended.waitFor(count);
    }

private:
    struct State {
        explicit State(std::shared_future<void> signal) : go(std::move(signal)) {}
        std::shared_future<void> go;
        Notes<bool> begun;
        Notes<bool> ended;
    };
    std::promise<void> go_;
    std::shared_ptr<State> state_ = std::make_shared<State>(go_.get_future().share());
};

TEST(BackgroundWorkersTest, WorkAtTheLowestPriorityOnThreadsOfTheirOwn) {
    const auto priorities = std::make_shared<Notes<int>>();
    BackgroundWorkers workers;
    ASSERT_TRUE(workers.post([=] { priorities->add(getpriority(PRIO_PROCESS, 0)); }));
    ASSERT_TRUE(priorities->waitFor(1));
    EXPECT_EQ(priorities->all().front(), 19);
    EXPECT_LT(getpriority(PRIO_PROCESS, 0), 19);
}

TEST(BackgroundWorkersTest, GoOnBesideWorkThatHangs) {
    Hang hang;
    const auto done = std::make_shared<Notes<int>>();
    BackgroundWorkers workers;
    for (std::size_t i = 0; i + 1 < BackgroundWorkers::maxThreads; ++i) {
        ASSERT_TRUE(workers.post(hang.work()));
    }
    ASSERT_TRUE(hang.waitForBegun(BackgroundWorkers::maxThreads - 1));
    for (int i = 0; i < 100; ++i) {
        ASSERT_TRUE(workers.post([done, i] { done->add(i); }));
    }
    EXPECT_TRUE(done->waitFor(100));
    EXPECT_LE(workers.threads(), BackgroundWorkers::maxThreads);
    EXPECT_TRUE(hang.letGo(BackgroundWorkers::maxThreads - 1));
}

TEST(BackgroundWorkersTest, DropWhatIsMoreThanMayWait) {
    Hang hang;
    BackgroundWorkers workers;
    std::size_t taken = 0;
    for (std::size_t i = 0; i < BackgroundWorkers::maxThreads; ++i) {
        taken += workers.post(hang.work()) ? 1U : 0U;
    }
    ASSERT_TRUE(hang.waitForBegun(BackgroundWorkers::maxThreads));
    for (std::size_t i = 0; i < 2 * BackgroundWorkers::maxWaiting; ++i) {
        taken += workers.post(hang.work()) ? 1U : 0U;
    }
    EXPECT_EQ(taken, BackgroundWorkers::maxThreads + BackgroundWorkers::maxWaiting);
    EXPECT_EQ(workers.threads(), BackgroundWorkers::maxThreads);
    EXPECT_TRUE(hang.letGo(taken)) << "what waited is done in the end";
}

TEST(BackgroundWorkersTest, DoNotWaitForWorkThatHangsWhenTheyGo) {
    Hang hang;
    const auto waited = std::make_shared<Notes<bool>>();
    std::optional<BackgroundWorkers> workers(std::in_place);
    for (std::size_t i = 0; i < BackgroundWorkers::maxThreads; ++i) {
        ASSERT_TRUE(workers->post(hang.work()));
    }
    ASSERT_TRUE(hang.waitForBegun(BackgroundWorkers::maxThreads));
    const auto owned = std::make_shared<int>();
    ASSERT_TRUE(workers->post([waited, owned] { waited->add(true); }));
    workers.reset();
    EXPECT_EQ(owned.use_count(), 1) << "what had not begun is gone";
    EXPECT_TRUE(hang.letGo(BackgroundWorkers::maxThreads));
    EXPECT_EQ(waited->size(), 0U);
}

TEST(BackgroundWorkersTest, HaveNoThreadsWithoutWork) {
    const auto done = std::make_shared<Notes<bool>>();
    BackgroundWorkers workers(std::chrono::milliseconds(0));
    EXPECT_EQ(workers.threads(), 0U);
    for (std::size_t round = 1; round <= 3; ++round) {
        ASSERT_TRUE(workers.post([done] { done->add(true); }));
        ASSERT_TRUE(done->waitFor(round));
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (workers.threads() > 0 && std::chrono::steady_clock::now() < end) {
            std::this_thread::yield();
        }
        EXPECT_EQ(workers.threads(), 0U);
    }
}

}  // namespace
}  // namespace corvane
