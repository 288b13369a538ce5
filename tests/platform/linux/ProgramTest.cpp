// The whole program in processes of its own: the helper on a private bus with a simulated Mac, and what is
// refused at the door.

#include <csignal>
#include <cstring>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/BusCaller.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using testing::HasSubstr;
using testing::Pair;
using testing::Pointee;

using Environment = std::map<std::string, std::string>;

constexpr const char* program = CORVANE_PROGRAM;

class DaemonTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
    }

    [[nodiscard]] Environment environment() const {
        return {{"CORVANE_SMC", "simulated"}, {"CORVANE_HELPER_BUS", bus.address()}};
    }

    /// Takes the fans of a daemon that has just been started.
    void boost(ChildProcess& daemon) const {
        ASSERT_TRUE(daemon.waitForError("listening on de.tavrin.corvane.smchelper")) << daemon.errors();
        BusCaller caller(bus.address());
        ASSERT_THAT(caller.call("setFanFloorWithPercentWithReply", 60.0), Pair(true, "floor set to 60%"));
        ASSERT_THAT(caller.status().get<bool>(StatusKey::isBoosted), Pointee(true));
        ASSERT_EQ(daemon.countErrors("released to Apple-auto"), 0U);
    }

    PrivateBus bus;
};

TEST_F(DaemonTest, ReleasesOnceAndEndsWellOnEachTerminationSignal) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(strsignal(signal));
        ChildProcess daemon(program, {"--daemon"}, environment());
        boost(daemon);
        daemon.signal(signal);
        EXPECT_EQ(daemon.wait(), 0) << daemon.errors();
        EXPECT_EQ(daemon.countErrors("received termination signal — releasing to Apple\n"), 1U);
        EXPECT_EQ(daemon.countErrors("released to Apple-auto (verified, attempt "), 1U);
        EXPECT_EQ(daemon.countErrors("WARNING"), 0U);
    }
}

TEST_F(DaemonTest, ReleasesOnceForASecondSignal) {
    ChildProcess daemon(program, {"--daemon"}, environment());
    boost(daemon);
    daemon.signal(SIGTERM);
    daemon.signal(SIGINT);
    EXPECT_EQ(daemon.wait(), 0) << daemon.errors();
    EXPECT_EQ(daemon.countErrors("released to Apple-auto (verified, attempt "), 1U);
}

TEST_F(DaemonTest, ReleasesAndFailsWhenItsBusGoesAway) {
    ChildProcess daemon(program, {"--daemon"}, environment());
    boost(daemon);
    bus.end();
    EXPECT_EQ(daemon.wait(), 1) << daemon.errors();
    EXPECT_EQ(daemon.countErrors("lost the bus — releasing to Apple"), 1U);
    EXPECT_EQ(daemon.countErrors("released to Apple-auto (verified, attempt "), 1U);
}

TEST_F(DaemonTest, FailsWhenAnotherOwnsItsName) {
    ChildProcess first(program, {"--daemon"}, environment());
    boost(first);
    ChildProcess second(program, {"--daemon"}, environment());
    EXPECT_EQ(second.wait(), 1);
    EXPECT_THAT(second.errors(), HasSubstr("cannot listen on de.tavrin.corvane.smchelper: "));
    EXPECT_THAT(BusCaller(bus.address()).status().get<bool>(StatusKey::isBoosted), Pointee(true));
}

TEST(Program, FailsAsADaemonWithoutABus) {
    for (const char* bus : {"unix:path=/no/such/bus", "nonsense:", "unix:"}) {
        ChildProcess daemon(program, {"--daemon"},
                            {{"CORVANE_SMC", "simulated"}, {"CORVANE_HELPER_BUS", bus}});
        EXPECT_EQ(daemon.wait(), 1) << daemon.errors();
        EXPECT_THAT(daemon.errors(), HasSubstr("cannot listen on de.tavrin.corvane.smchelper: "));
    }
}

TEST(Program, RefusesNonsenseInItsEnvironmentInOneLine) {
    for (const char* role : {"--daemon", "--temps", "--diag", "--dumpkeys", "--application"}) {
        for (const auto& [variable, problem] :
             Environment{{"CORVANE_SMC", "it must be \"auto\" or \"simulated\""},
                         {"CORVANE_SYSFS", "it must be the absolute path of a folder"},
                         {"CORVANE_HELPER_BUS", "it must be \"system\", \"session\" or a D-Bus address"}}) {
            ChildProcess process(program, {role}, {{variable, "nonsense"}});
            EXPECT_EQ(process.wait(), 1);
            EXPECT_EQ(process.errors(), fmt::format("corvane: {} is \"nonsense\"; {}\n", variable, problem));
        }
    }
}

}  // namespace
}  // namespace corvane
