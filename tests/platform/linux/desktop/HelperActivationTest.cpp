// The connection and a bus that starts the helper when it is called.

#include <chrono>
#include <csignal>
#include <optional>
#include <string>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sdbus-c++/sdbus-c++.h>

#include "tests/support/HelperClient.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::Pointee;

class HelperActivationTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
    }

    void offer(const std::string& command) { bus.offer(HelperAddress::busName, command); }

    /// The real helper, on a simulated Mac.
    void offerHelper() {
        offer(fmt::format("/usr/bin/env CORVANE_SMC=simulated 'CORVANE_HELPER_BUS={}' '{}' --daemon",
                          bus.address(), CORVANE_PROGRAM));
    }

    void killHelper() {
        const auto connection = HelperBus{bus.address()}.connect();
        const auto proxy = sdbus::createProxy(*connection, "org.freedesktop.DBus", "/org/freedesktop/DBus");
        std::uint32_t process = 0;
        proxy->callMethod("GetConnectionUnixProcessID")
            .onInterface("org.freedesktop.DBus")
            .withArguments(std::string(HelperAddress::busName))
            .storeResultsTo(process);
        kill(static_cast<pid_t>(process), SIGKILL);
    }

    PrivateBus bus;
};

TEST_F(HelperActivationTest, StartsTheRealHelperAndSpeaksWithIt) {
    offerHelper();
    HelperClient client(bus.address());
    client.ping();
    client.setFanFloor(42.9);
    client.status();
    client.stopBoost();
    client.setLidStayAwake(true);
    client.setLidStayAwake(false);
    ASSERT_TRUE(client.told().waitFor(6));
    EXPECT_THAT(client.told().all(), ElementsAre("ok: Corvane daemon alive, fans=2", "ok: floor set to 42%",
                                                 testing::StartsWith("status of "), "ok: boost stopped",
                                                 "ok: lid-stay-awake on", "ok: lid-stay-awake off"));
    const StatusRecord status = client.lastStatus();
    EXPECT_THAT(status.get<double>(StatusKey::floorPercent), Pointee(42.9));
    EXPECT_THAT(status.get<bool>(StatusKey::isBoosted), Pointee(true));
    EXPECT_THAT(status.get<std::vector<StatusRecord>>(StatusKey::fans), Pointee(testing::SizeIs(2)));
}

TEST_F(HelperActivationTest, StartsTheHelperAnewAfterItDied) {
    offerHelper();
    HelperClient client(bus.address());
    client.ping();
    ASSERT_TRUE(client.told().waitFor(1));
    killHelper();
    ASSERT_TRUE(client.told().waitFor(2));
    client.ping();
    ASSERT_TRUE(client.told().waitFor(3));
    EXPECT_THAT(client.told().all(), ElementsAre("ok: Corvane daemon alive, fans=2", "interrupted",
                                                 "ok: Corvane daemon alive, fans=2"));
}

TEST_F(HelperActivationTest, IsInvalidatedOnceWhenTheHelperCannotBeStarted) {
    offer("/nonexistent/corvane-helper --daemon");
    HelperClient client(bus.address());
    client.ping();
    client.status();
    ASSERT_TRUE(client.told().waitFor(1));
    client.settle();
    EXPECT_THAT(client.told().all(), ElementsAre("invalidated"));
}

TEST_F(HelperActivationTest, IsInvalidatedOnceWhenTheHelperEndsAtItsStart) {
    offer("/bin/false");
    HelperClient client(bus.address());
    client.ping();
    client.status();
    ASSERT_TRUE(client.told().waitFor(1));
    client.settle();
    EXPECT_THAT(client.told().all(), ElementsAre("invalidated"));
}

TEST_F(HelperActivationTest, FailsTheCallsToAHelperThatStartsAndNeverComes) {
    offer("/bin/sleep 3");
    HelperClient client(bus.address(), 50ms);
    client.ping();
    client.status();
    ASSERT_TRUE(client.told().waitFor(2));
    EXPECT_THAT(client.told().all(), testing::Each(HelperClient::tooLate));
}

}  // namespace
}  // namespace corvane
