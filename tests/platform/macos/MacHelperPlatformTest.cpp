// The whole helper of a Mac: the real runDaemon over the fakes of Apple's frameworks, in front of a simulated
// Mac.

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "helper/runDaemon.h"
#include "platform/ExecutablePath.h"
#include "platform/macos/MacCommandPlatform.h"
#include "platform/macos/MacHelperPlatform.h"
#include "smc/csmc.h"
#include "tests/platform/macos/HeldSignalsKept.h"
#include "tests/platform/macos/XpcClient.h"
#include "tests/platform/macos/fakes/Foundation/FakeSystemLog.h"
#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpc.h"
#include "tests/platform/macos/fakes/IOKit/FakeSmcService.h"
#include "tests/platform/macos/fakes/IOKit/FakeSystemPower.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatchQueue.h"
#include "tests/platform/macos/fakes/mach-o/FakeLoader.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class MacHelperPlatformTest : public testing::Test {
protected:
    MacHelperPlatformTest() {
        mac.holdSensorsAt(60.0F);
        xpc.install(std::string(FanHelperProtocol::serviceName));
    }

    /// What happens so long after the start.
    void at(Duration delay, SerialQueue::Work work) {
        script_.push_back(scriptQueue_.after(
            delay, [this, work = std::move(work)] { dispatch.async(dispatch.mainQueue(), work); }));
    }

    int run() {
        MacHelperPlatform platform;
        return runDaemon(platform);
    }

    HeldSignalsKept heldSignals;
    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeSystemLog log;
    FakeXpc xpc;
    FakeSystemPower power;
    SimulatedMac mac{{.model = tinyMac()}, [this] { return time.bootTime(); }};
    FakeSmcService smc{mac};

private:
    VirtualQueue scriptQueue_{time};
    std::vector<std::unique_ptr<Timer>> script_;
};

TEST_F(MacHelperPlatformTest, WorksOnOneQueueUnderItsName) {
    std::vector<std::string> labels;
    at(1s, [&] {
        for (const FakeDispatchQueue* queue : dispatch.queueHandles) {
            labels.push_back(queue->label());
        }
        dispatch.raise(SIGTERM);
    });
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(labels, ElementsAre("de.tavrin.switchyard.daemon.queue"));
}

TEST_F(MacHelperPlatformTest, StartsListensAndEndsInOrder) {
    at(1s, [this] { dispatch.raise(SIGTERM); });
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(log.lines(),
                ElementsAre(fmt::format("Corvane daemon starting (uid={}, euid={})", getuid(), geteuid()),
                            "Corvane daemon: opened SMC, 1 fans, 1 CPU keys, 1 safety keys, 0 GPU keys",
                            "Corvane daemon: reset to Apple-auto control on startup (safety)",
                            "Corvane daemon: listening on de.tavrin.corvane.smchelper",
                            "Corvane daemon: received termination signal — releasing to Apple",
                            "Corvane daemon: released to Apple-auto (verified, attempt 1)"));
    EXPECT_EQ(smc.openConnections(), 0U);
}

TEST_F(MacHelperPlatformTest, HoldsAFloorForItsCallerAndHandsTheFansBackOnASignal) {
    std::vector<bool> forced;
    std::optional<XpcClient> client;
    at(1s, [&] {
        client.emplace();
        client->setFanFloor(60.0);
    });
    at(2s, [&] {
        forced.push_back(mac.isFanForced(0));
        client->status();
    });
    at(3s, [&] { dispatch.raise(SIGTERM); });
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(forced, ElementsAre(true));
    EXPECT_FALSE(mac.isAnyFanForced());
    time.settle();
    EXPECT_THAT(client->takeTold(), ElementsAre("ok: floor set to 60%", "status of 9", "interrupted"));
    EXPECT_THAT(client->last.get<double>(StatusKey::floorPercent), testing::Pointee(60.0));
    EXPECT_THAT(client->last.get<bool>(StatusKey::isBoosted), testing::Pointee(true));
    const auto* fans = client->last.get<std::vector<StatusRecord>>(StatusKey::fans);
    ASSERT_THAT(fans, testing::Pointee(testing::SizeIs(1)));
    EXPECT_THAT(fans->front().get<std::int32_t>(StatusKey::mode), testing::Pointee(1));
}

TEST_F(MacHelperPlatformTest, HandsTheFansBackWhenItsCallerFallsSilent) {
    std::vector<bool> forced;
    std::optional<XpcClient> client;
    at(1s, [&] {
        client.emplace();
        client->setFanFloor(60.0);
    });
    at(6900ms, [&] { forced.push_back(mac.isFanForced(0)); });
    at(9100ms, [&] { forced.push_back(mac.isFanForced(0)); });
    at(10s, [&] { dispatch.raise(SIGINT); });
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(forced, ElementsAre(true, false));
    EXPECT_EQ(log.count("WATCHDOG — app silent, releasing fans to Apple"), 1U);
}

TEST_F(MacHelperPlatformTest, HandsTheFansBackBeforeTheComputerSleeps) {
    std::optional<XpcClient> client;
    bool wasForced = false;
    bool isReady = false;
    at(1s, [&] {
        client.emplace();
        client->setFanFloor(60.0);
    });
    VirtualQueue system(time);
    const auto sleep = system.after(2s, [&] {
        wasForced = mac.isFanForced(0);
        isReady = power.announceSleep() && !mac.isAnyFanForced();
    });
    at(3s, [&] { dispatch.raise(SIGTERM); });
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(wasForced);
    EXPECT_TRUE(isReady);
    EXPECT_EQ(log.count("system is going to sleep — releasing fans to Apple"), 1U);
}

TEST_F(MacHelperPlatformTest, EndsOnASignalThatComesAsItStarts) {
    bool isRaised = false;
    mac.onWrite([&](std::string_view, std::span<const std::uint8_t>, SmcResult) {
        if (!std::exchange(isRaised, true)) {
            dispatch.raise(SIGTERM);
        }
    });
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(log.count("received termination signal"), 1U);
    EXPECT_FALSE(mac.isAnyFanForced());
}

TEST_F(MacHelperPlatformTest, LivesWithoutAnSmc) {
    mac.setSmcPresent(false);
    std::optional<XpcClient> client;
    at(1s, [&] {
        client.emplace();
        client->setFanFloor(60.0);
        client->ping();
    });
    at(2s, [&] { dispatch.raise(SIGTERM); });
    EXPECT_EQ(run(), 0);
    time.settle();
    EXPECT_THAT(client->takeTold(), testing::Contains("ok: Corvane daemon alive, fans=0"));
    EXPECT_EQ(log.count("no temp sensors — refusing manual control for safety"), 1U);
}

TEST_F(MacHelperPlatformTest, LogsPercentSignsAsTheyAre) {
    NSLogLog().write("50 %@ %s %n");
    EXPECT_THAT(log.lines(), ElementsAre("50 %@ %s %n"));
}

TEST_F(MacHelperPlatformTest, ReadsTheSmcForCommands) {
    MacCommandPlatform platform;
    EXPECT_EQ(platform.isRoot(), geteuid() == 0);
    EXPECT_EQ(platform.pause().bootTime(), time.bootTime());
    const auto connection = platform.makeSmcConnection();
    csmc_use_connection(connection.get());
    EXPECT_EQ(csmc_open(), 0);
    EXPECT_GT(csmc_key_count(), 0U);
    csmc_use_connection(nullptr);
}

TEST(MacExecutablePath, IsTheProgramsOwnWithLinksResolved) {
    const TemporaryFolder folder;
    const std::filesystem::path program = std::filesystem::canonical(folder.path()) / "program";
    std::ofstream(program) << "";
    std::filesystem::create_symlink(program, folder.path() / "link");
    setFakeExecutable(folder.path() / "link");
    EXPECT_EQ(executablePath(), program);
    setFakeExecutable(folder.path() / "nowhere");
    EXPECT_EQ(executablePath(), "");
}

}  // namespace
}  // namespace corvane
