#include <algorithm>

#include "smc/csmc.h"
#include "tests/helper/TestHelperPlatform.h"
#include "tests/helper/daemonLines.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto terminated = "Corvane daemon: received termination signal — releasing to Apple";

/// The last events of a run.
std::vector<std::string> lastEvents(const TestHelperPlatform& platform, std::size_t count) {
    const std::vector<std::string>& events = platform.events.events;
    return {events.end() - static_cast<std::ptrdiff_t>(std::min(count, events.size())), events.end()};
}

TEST(RunDaemon, GoesThroughItsLifeInOrder) {
    TestHelperPlatform platform;
    platform.loop.raiseAfter(1s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_THAT(platform.events.events,
                ElementsAre("[signals held]", "Corvane daemon starting (uid=1000, euid=0)",
                            "[queue de.tavrin.switchyard.daemon.queue]", "[SMC]", "[sleep setting]",
                            "[suspend observer]", "[service watchdog]",
                            "Corvane daemon: opened SMC, 1 fans, 1 CPU keys, 1 safety keys, 0 GPU keys",
                            "Corvane daemon: reset to Apple-auto control on startup (safety)", "[listener]",
                            "[listener resumed]", "[signals handled]",
                            "Corvane daemon: listening on de.tavrin.corvane.smchelper", "[main loop]",
                            terminated, "[listener gone]", released));
}

TEST(RunDaemon, ASignalDuringABoostReleasesOnceThenExits) {
    TestHelperPlatform platform;
    bool wasForced = false;
    platform.boostAfter(1s);
    platform.loop.scripted(2s, [&] { wasForced = platform.mac.isFanForced(0); });
    platform.loop.raiseAfter(2s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_TRUE(wasForced);
    EXPECT_FALSE(platform.mac.isAnyFanForced());
    EXPECT_EQ(platform.count("released to Apple-auto"), 1U);
    EXPECT_THAT(lastEvents(platform, 3), ElementsAre(terminated, "[listener gone]", released));
}

TEST(RunDaemon, ASignalWithAStuckFanExitsAfterTheLastAttempt) {
    TestHelperPlatform platform;
    platform.boostAfter(1s);
    platform.loop.scripted(2s, [&] { platform.mac.setFault("F0Md", KeyFault::neverAutomatic(1)); });
    platform.loop.raiseAfter(2s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_GE(platform.now(), 2600ms);
    EXPECT_LE(platform.now(), 2620ms);
    EXPECT_EQ(platform.count("WARNING — could not verify auto mode"), 1U);
}

TEST(RunDaemon, ASignalSwitchesTheLidBack) {
    TestHelperPlatform platform;
    platform.ask(1s, [](FanHelperProtocol& helper) {
        helper.setLidStayAwakeWithReply(true, [](bool /*ok*/, const std::string& /*text*/) {});
    });
    platform.loop.raiseAfter(2s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_THAT(platform.sleepSetting.calls(), ElementsAre(true, false));
}

TEST(RunDaemon, ASignalAtTheMomentOfARequestStillReleases) {
    TestHelperPlatform platform;
    platform.boostAfter(1s);
    platform.loop.scripted(1s, [&] { platform.loop.raise(); });
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_EQ(platform.count("loop started"), 1U);
    EXPECT_FALSE(platform.mac.isAnyFanForced());
}

TEST(RunDaemon, ASignalDuringStartUpIsNotLost) {
    TestHelperPlatform platform;
    platform.signalDuringStart = true;
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_LT(platform.now(), 1s);
    EXPECT_EQ(platform.count("reset to Apple-auto control on startup"), 1U);
    EXPECT_THAT(lastEvents(platform, 3), ElementsAre(terminated, "[listener gone]", released));
}

TEST(RunDaemon, ASecondSignalChangesNothing) {
    TestHelperPlatform platform;
    platform.loop.raiseAfter(1s);
    platform.loop.raiseAfter(1s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_EQ(platform.count("released to Apple-auto"), 1U);
}

TEST(RunDaemon, ExitsWithOneWhenItCannotListen) {
    TestHelperPlatform platform;
    platform.listenFailure = "the name is taken";
    EXPECT_EQ(runDaemon(platform), 1);
    EXPECT_THAT(lastEvents(platform, 4),
                ElementsAre("Corvane daemon: cannot listen on de.tavrin.corvane.smchelper: the name is taken",
                            "[main loop]", "[listener gone]", released));
}

TEST(RunDaemon, ServesEveryConnectionWithTheSameService) {
    TestHelperPlatform platform;
    std::vector<FanHelperProtocol*> served;
    platform.ask(1s, [&](FanHelperProtocol& helper) { served.push_back(&helper); });
    platform.ask(2s, [&](FanHelperProtocol& helper) { served.push_back(&helper); });
    platform.loop.raiseAfter(3s);
    EXPECT_EQ(runDaemon(platform), 0);
    ASSERT_EQ(served.size(), 2U);
    EXPECT_EQ(served[0], served[1]);
}

TEST(RunDaemon, WorksWithoutAnSmc) {
    TestHelperPlatform platform;
    platform.mac.setSmcPresent(false);
    platform.boostAfter(1s);
    platform.loop.raiseAfter(2s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_EQ(platform.count("no temp sensors — refusing manual control for safety"), 1U);
}

TEST(RunDaemon, FeedsTheServiceWatchdogFromItsQueue) {
    TestHelperPlatform platform;
    platform.watchdogInterval = 400ms;
    platform.loop.raiseAfter(1300ms);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_THAT(platform.fedAt, ElementsAre(400ms, 800ms, 1200ms));
}

TEST(RunDaemon, DoesNotFeedTheServiceWatchdogWhileItsQueueIsBlocked) {
    TestHelperPlatform platform;
    platform.watchdogInterval = 400ms;
    platform.loop.scripted(500ms, [&] { platform.queue->async([&] { platform.queue->sleep(2s); }); });
    platform.loop.raiseAfter(3s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_THAT(platform.fedAt, ElementsAre(400ms, 2500ms, 2800ms));
}

TEST(RunDaemon, FeedsNothingWithoutAServiceWatchdog) {
    TestHelperPlatform platform;
    platform.loop.raiseAfter(10s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_THAT(platform.fedAt, IsEmpty());
}

TEST(RunDaemon, HasReleasedTheFansBeforeTheComputerSleeps) {
    TestHelperPlatform platform;
    std::vector<bool> forced;
    platform.boostAfter(1s);
    platform.loop.scripted(2s, [&] {
        forced.push_back(platform.mac.isFanForced(0));
        platform.beforeSuspend();
        forced.push_back(platform.mac.isFanForced(0));
    });
    platform.loop.raiseAfter(3s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_THAT(forced, ElementsAre(true, false));
    EXPECT_EQ(platform.count("system is going to sleep — releasing fans to Apple"), 1U);
}

TEST(RunDaemon, TakesFloorsAgainWhenTheComputerIsAwake) {
    TestHelperPlatform platform;
    std::vector<bool> forced;
    const auto note = [&] { forced.push_back(platform.mac.isFanForced(0)); };
    platform.loop.scripted(1s, [&] { platform.beforeSuspend(); });
    platform.boostAfter(2s);
    platform.loop.scripted(3s, note);
    platform.loop.scripted(3s, [&] { platform.afterResume(); });
    platform.boostAfter(4s);
    platform.loop.scripted(5s, note);
    platform.loop.raiseAfter(6s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_THAT(forced, ElementsAre(false, true));
}

TEST(RunDaemon, LeavesTheSmcLayerWithoutAConnection) {
    TestHelperPlatform platform;
    platform.loop.raiseAfter(1s);
    EXPECT_EQ(runDaemon(platform), 0);
    EXPECT_EQ(csmc_open(), SmcConnection::noService);
}

}  // namespace
}  // namespace corvane
