#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/simulated/RecordingLog.h"
#include "platform/simulated/VirtualTime.h"
#include "platform/simulated/makeSimulatedSmc.h"
#include "tests/platform/simulated/AllocationCount.h"
#include "tests/platform/simulated/SmcClient.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

/// A control file of its own for each test, gone afterwards.
class MakeSimulatedSmcTest : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "corvane-simulation-XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        path = folder / "mac.conf";
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::unique_ptr<SmcConnection> make(const std::string& scenarioPath) {
        return makeSimulatedSmc([this] { return time.bootTime(); }, scenarioPath, log);
    }

    void write(const std::string& text) const { std::ofstream(path) << text; }

    std::filesystem::path folder;
    std::filesystem::path path;
    VirtualTime time;
    RecordingLog log;
};

TEST_F(MakeSimulatedSmcTest, WithoutAControlFileItIsTheDefaultMachine) {
    const auto connection = make("");
    SmcClient smc(*connection);
    EXPECT_EQ(connection->open(), 0);
    EXPECT_EQ(smc.readByte("FNum"), 2);
    EXPECT_THAT(log.lines(),
                ElementsAre("Simulation: this is a simulated MacBook Pro 16\" (MacBookPro18,2), M1 Max"));
}

TEST_F(MakeSimulatedSmcTest, TheFileChoosesTheModelWhenTheMachineIsMade) {
    write("model = macbook-pro-14-m5\n");
    const auto connection = make(path.string());
    SmcClient smc(*connection);
    EXPECT_EQ(smc.readByte("F0md"), 0);
    write("model = mac-mini\nhold.Tp00 = 77\n");
    time.advance(100ms);
    EXPECT_EQ(smc.readFloat("Tp00"), 77.0F);
    EXPECT_EQ(smc.readByte("F0md"), 0) << "it is still the same machine";
}

TEST_F(MakeSimulatedSmcTest, TheFileIsFollowedWhileTheMachineRuns) {
    const auto connection = make(path.string());
    SmcClient smc(*connection);
    EXPECT_EQ(smc.readResult("Tp09"), SmcResult::success);
    write("hold.Tp09 = 98.5\n");
    EXPECT_NE(smc.readFloat("Tp09"), 98.5F) << "it was looked at just now";
    time.advance(100ms);
    EXPECT_EQ(smc.readFloat("Tp09"), 98.5F);
    write("fault.T* = vanished\n");
    time.advance(100ms);
    EXPECT_EQ(smc.readResult("Tp09"), SmcResult::keyNotFound);
    write("");
    time.advance(100ms);
    EXPECT_EQ(smc.readResult("Tp09"), SmcResult::success);
}

TEST_F(MakeSimulatedSmcTest, AMistakeInTheFileLeavesThePreviousStateInForce) {
    write("hold.Tp09 = 98.5\n");
    const auto connection = make(path.string());
    SmcClient smc(*connection);
    log.clear();
    write("hold.Tp09 = 50\nhold.Tq09 = 50\n");
    for (int i = 0; i < 5; ++i) {
        time.advance(100ms);
        EXPECT_EQ(smc.readFloat("Tp09"), 98.5F);
    }
    EXPECT_THAT(log.lines(), ElementsAre("Simulation: " + path.string() +
                                         ":2: this Mac has no such key; the file is not applied"));
}

TEST_F(MakeSimulatedSmcTest, WithoutAServiceItOpensOnceTheServiceIsThere) {
    write("smc = absent\n");
    const auto connection = make(path.string());
    EXPECT_EQ(connection->open(), -1);
    write("smc = present\n");
    time.advance(100ms);
    EXPECT_EQ(connection->open(), 0);
}

TEST_F(MakeSimulatedSmcTest, AFolderIsNoControlFile) {
    const auto connection = make(folder.string());
    EXPECT_EQ(connection->open(), 0);
    EXPECT_EQ(log.count("not applied"), 0U);
}

TEST_F(MakeSimulatedSmcTest, ExchangesDoNotAllocate) {
    write("load = 60\nhold.Te00 = 70\nfault.Te01 = stale\n");
    const auto connection = make(path.string());
    SmcClient smc(*connection);
    smc.writeByte("F0Md", 1);
    const std::size_t before = allocationCount();
    for (int i = 0; i < 100; ++i) {
        time.advance(100ms);
        smc.read("#KEY");
        smc.read("Tp09");
        smc.read("Te01");
        smc.read("Nope");
        smc.readFloat("F0Ac");
        smc.writeByte("Ftst", 1);
        smc.writeByte("F0Md", 1);
        smc.writeFloat("F0Tg", 3000.0F);
    }
    EXPECT_EQ(allocationCount(), before);
    EXPECT_GT(smc.readFloat("F0Ac").value_or(0.0F), 1000.0F);
}

}  // namespace
}  // namespace corvane
