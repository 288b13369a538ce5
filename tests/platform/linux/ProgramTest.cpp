// The whole program in processes of its own: the helper on a private bus with a simulated Mac, and what is
// refused at the door.

#include <csignal>
#include <cstring>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/BusCaller.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::HasSubstr;
using testing::Pair;
using testing::Pointee;
using testing::StartsWith;

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
        ASSERT_EQ(daemon.countErrors(fmt::format("starting (uid={}, euid={})\n", getuid(), geteuid())), 1U);
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

/// A diagnostic command that has run to its end.
struct Command {
    Command(const std::vector<std::string>& arguments, const Environment& environment)
        : process(program, arguments, environment), status(process.wait()) {}

    [[nodiscard]] const std::string& output() const { return process.output(); }
    [[nodiscard]] const std::string& errors() const { return process.errors(); }

    ChildProcess process;
    int status;
};

/// The same on the simulated Mac, which names itself in a first line on standard error.
struct SimulatedCommand : Command {
    explicit SimulatedCommand(const std::vector<std::string>& arguments)
        : Command(arguments, {{"CORVANE_SMC", "simulated"}}) {
        EXPECT_THAT(process.errors(), StartsWith("Simulation: "));
    }

    [[nodiscard]] std::string errors() const {
        return process.errors().substr(process.errors().find('\n') + 1);
    }
};

TEST(Program, ReportsTheSafetySensors) {
    const SimulatedCommand temps({"--temps"});
    EXPECT_EQ(temps.status, 0);
    EXPECT_THAT(temps.output(), StartsWith("=== Safety-Sensoren (CPU-Kerne + GPU) ===\n  T"));
    EXPECT_THAT(temps.output(), HasSubstr("\n→ Heißester Safety-Sensor: T"));
    EXPECT_EQ(temps.errors(), "");
}

TEST(Program, ListsEveryKey) {
    const SimulatedCommand keys({"--dumpkeys"});
    EXPECT_EQ(keys.status, 0);
    EXPECT_THAT(keys.output(), StartsWith("#KEY: size=4 "));
    EXPECT_THAT(keys.output(), HasSubstr("\nF0Mx: size=4 "));
    EXPECT_EQ(keys.errors(), "");
}

TEST(Program, ShowsTheFans) {
    const SimulatedCommand diag({"--diag", "probe"});
    EXPECT_EQ(diag.status, 0);
    EXPECT_THAT(diag.output(),
                StartsWith(fmt::format("=== Switchyard SMC Diagnostics ===\nrunning as root: {}\nFNum ",
                                       geteuid() == 0)));
    // Only root gets to the test that the second argument chooses.
    EXPECT_THAT(diag.output(),
                HasSubstr(geteuid() == 0 ? "\n=== MODE WRITE PROBE ===\n"
                                         : "\nRe-run with: sudo corvane --diag [probe|loop]\n"));
    EXPECT_EQ(diag.errors(), "");
}

TEST(Program, WritesKeysAndTellsOfEachThatFails) {
    EXPECT_EQ(SimulatedCommand({"--smc-write", "F0Tg:u8", "0"}).status, 0);
    const SimulatedCommand write({"--smc-write", "F0Mx", "1", "bad", "1"});
    EXPECT_EQ(write.status, 1);
    EXPECT_EQ(write.errors(), "write F0Mx=1 failed: rc=134\nbad key: bad\n");
    EXPECT_EQ(write.output(), "");
}

TEST(Program, TellsWhenThereIsNoController) {
    const TemporaryFolder empty;
    const Environment nothing{{"CORVANE_SYSFS", empty.path().string()}};
    const Command write({"--smc-write", "F0Md:u8", "1"}, nothing);
    EXPECT_EQ(write.status, 2);
    EXPECT_EQ(write.errors(), "csmc_open failed: -1\n");
    EXPECT_EQ(write.output(), "");
    const Command diag({"--diag"}, nothing);
    EXPECT_EQ(diag.status, 1);
    EXPECT_EQ(diag.errors(), "SMC service not reachable. Aborting.\n");
    EXPECT_THAT(diag.output(), StartsWith("=== Switchyard SMC Diagnostics ===\n"));
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
