// The bus thread's part of the connection, run by the test's own thread.

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/desktop/HelperLink.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/Notes.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

class HelperLinkTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
    }

    HelperLinkEvents events() {
        return {[this](CallId call, const HelperAnswer&) { calls.emplace_back(call, "answered"); },
                [this](CallId call, const std::string& description) {
                    calls.emplace_back(call, "failed: " + description);
                },
                [](CallId) {}, [this] { ++timesUnavailable; }};
    }

    PrivateBus bus;
    asio::io_context context;
    std::vector<std::pair<CallId, std::string>> calls;
    int timesUnavailable = 0;
    const HelperRequest ping{"pingWithReply", {}, readTextAnswer};
};

TEST_F(HelperLinkTest, LosesWhatIsSentOverABusThatHasGoneAway) {
    HelperLink link(context, HelperBus{bus.address()}, events());
    link.open();
    ASSERT_EQ(timesUnavailable, 0);
    bus.end();
    while (timesUnavailable == 0 && context.run_one_for(testPatience) > 0) {
    }
    ASSERT_EQ(timesUnavailable, 1);
    link.send(1, ping);
    link.send(2, ping);
    context.poll();
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(timesUnavailable, 1);
    link.forget(1);
}

TEST_F(HelperLinkTest, LosesWhatIsSentWithoutABus) {
    const EnvironmentVariable none("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    HelperLink link(context, HelperBus{"session"}, events());
    link.open();
    EXPECT_EQ(timesUnavailable, 1);
    link.send(1, ping);
    context.poll();
    EXPECT_TRUE(calls.empty());
}

}  // namespace
}  // namespace corvane
