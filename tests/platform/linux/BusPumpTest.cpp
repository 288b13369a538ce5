#include <memory>
#include <string>

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <gtest/gtest.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/BusNameWatch.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/HelperBus.h"
#include "tests/support/Notes.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

/// A connection on the loop.
struct Pumped {
    Pumped(asio::io_context& context, const PrivateBus& bus)
        : connection(HelperBus{bus.address()}.connect()),
          pump(std::make_unique<BusPump>(context, *connection, [this](const std::string&) { ++losses; })) {
        pump->process();
    }

    [[nodiscard]] int descriptor() const { return connection->getEventLoopPollData().fd; }

    std::unique_ptr<sdbus::IConnection> connection;
    int losses = 0;
    std::unique_ptr<BusPump> pump;
};

class BusPumpTest : public testing::Test {
protected:
    void SetUp() override {
        for (const PrivateBus* bus : {&ending, &lasting}) {
            if (bus->problem()) {
                GTEST_SKIP() << *bus->problem();
            }
        }
    }

    void lose(Pumped& pumped) {
        ending.end();
        while (pumped.losses == 0 && context.run_one_for(testPatience) > 0) {
        }
        ASSERT_EQ(pumped.losses, 1);
    }

    /// Whether the bus's answer to a question arrives.
    bool isAnswered(Pumped& pumped) {
        bool isAnswered = false;
        const auto proxy = sdbus::createProxy(*pumped.connection, busItself, "/org/freedesktop/DBus");
        pumped.pump->send([&] {
            proxy->callMethodAsync("GetId").onInterface(busItself).uponReplyInvoke(
                [&](const sdbus::Error* error, const std::string& /*id*/) { isAnswered = error == nullptr; });
        });
        while (!isAnswered && context.run_one_for(testPatience) > 0) {
        }
        return isAnswered;
    }

    asio::io_context context;
    asio::executor_work_guard<asio::io_context::executor_type> guard{context.get_executor()};
    PrivateBus ending;
    PrivateBus lasting;
};

TEST_F(BusPumpTest, TellsOnceThatTheBusHasGoneAway) {
    Pumped pumped(context, ending);
    ASSERT_TRUE(isAnswered(pumped));
    lose(pumped);
    pumped.pump->process();
    const auto proxy = sdbus::createProxy(*pumped.connection, busItself, "/org/freedesktop/DBus");
    pumped.pump->send([&] { proxy->createMethodCall(busItself, "GetId").send(0); });
    EXPECT_FALSE(pumped.pump->isCongested());
    EXPECT_EQ(pumped.losses, 1);
}

TEST_F(BusPumpTest, LeavesAnotherConnectionThatGotItsNumberAlone) {
    Pumped former(context, ending);
    const int number = former.descriptor();
    lose(former);
    Pumped next(context, lasting);
    ASSERT_EQ(next.descriptor(), number);
    former.pump.reset();
    EXPECT_TRUE(isAnswered(next));
}

}  // namespace
}  // namespace corvane
