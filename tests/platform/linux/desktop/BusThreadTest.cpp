#include <memory>
#include <optional>
#include <string>
#include <thread>

#include <asio/steady_timer.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include "platform/linux/desktop/BusThread.h"
#include "tests/support/Notes.h"

namespace corvane {
namespace {

TEST(BusThread, RunsWhatIsPostedInOrderOnAThreadOfItsOwn) {
    Notes<int> order;
    Notes<std::thread::id> threads;
    BusThread bus;
    for (int i = 0; i < 3; ++i) {
        bus.post([&, i] {
            order.add(i);
            threads.add(std::this_thread::get_id());
        });
    }
    ASSERT_TRUE(threads.waitFor(3));
    EXPECT_THAT(order.all(), testing::ElementsAre(0, 1, 2));
    EXPECT_THAT(threads.all(), testing::Each(threads.all().front()));
    EXPECT_NE(threads.all().front(), std::this_thread::get_id());
}

TEST(BusThread, DoesWhatWasPostedBeforeItEnds) {
    std::optional<BusThread> bus(std::in_place);
    int done = 0;
    for (int i = 0; i < 1000; ++i) {
        bus->post([&] { ++done; });
    }
    bus.reset();
    EXPECT_EQ(done, 1000);
}

TEST(BusThread, LetsGoOfWhatIsStillWaitedForWhenItEnds) {
    std::optional<BusThread> bus(std::in_place);
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> watched = held;
    bus->post([&context = bus->context(), held = std::move(held)] {
        const auto timer = std::make_shared<asio::steady_timer>(context, std::chrono::hours(1));
        timer->async_wait([timer, held](const std::error_code& /*error*/) {});
    });
    bus.reset();
    EXPECT_TRUE(watched.expired());
}

TEST(BusThread, NamesItsThread) {
    Notes<std::string> names;
    BusThread bus("a name that is too long");
    bus.post([&] {
        char name[16] = {};
        pthread_getname_np(pthread_self(), name, sizeof name);
        names.add(name);
    });
    ASSERT_TRUE(names.waitFor(1));
    EXPECT_EQ(names.all().front(), "a name that is ");
}

}  // namespace
}  // namespace corvane
