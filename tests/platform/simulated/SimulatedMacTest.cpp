#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/simulated/SimulatedMacFixture.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

TEST(SimulatedMac, DrivesItsFansItselfToBeginWith) {
    MacOnVirtualTime machine(macBookPro16());
    EXPECT_FALSE(machine.mac.isAnyFanForced());
    EXPECT_EQ(machine.smc.readByte("F0Md"), 0);
    EXPECT_EQ(machine.smc.readByte("F1Md"), 0);
    EXPECT_EQ(machine.smc.readFloat("F0Tg"), 0.0F);
    EXPECT_EQ(machine.mac.writeCount(), 0U);
}

TEST(SimulatedMac, ModeOneForcesOneFanToItsTargetAndModeZeroHandsItBack) {
    MacOnVirtualTime machine(macBookPro16());
    EXPECT_EQ(machine.smc.writeByte("F1Md", 1), SmcResult::success);
    EXPECT_EQ(machine.smc.writeFloat("F1Tg", 3000.0F), SmcResult::success);
    machine.time.advance(20s);
    EXPECT_TRUE(machine.mac.isFanForced(1));
    EXPECT_FALSE(machine.mac.isFanForced(0));
    EXPECT_EQ(machine.smc.readByte("F1Md"), 1);
    EXPECT_EQ(machine.smc.readFloat("F1Tg"), 3000.0F);
    EXPECT_EQ(machine.mac.fanSpeed(1), 3000.0);
    EXPECT_EQ(machine.mac.fanSpeed(0), 0.0);
    EXPECT_EQ(machine.smc.writeByte("F1Md", 0), SmcResult::success);
    EXPECT_EQ(machine.smc.readByte("F1Md"), 0);
    machine.time.advance(20s);
    EXPECT_EQ(machine.mac.fanSpeed(1), 0.0);
    EXPECT_EQ(machine.mac.fanTarget(1), 0.0);
}

TEST(SimulatedMac, RemembersWhatWasWritten) {
    MacOnVirtualTime machine(macBookPro16());
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), std::nullopt);
    machine.smc.writeFloat("F0Tg", 2500.0F);
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), 2500.0F);
    EXPECT_EQ(machine.smc.readFloat("F0Tg"), 0.0F) << "the firmware's own target";
    EXPECT_EQ(machine.mac.writeCount(), 1U);
    machine.smc.writeFloat("F0Mn", 2500.0F);
    EXPECT_EQ(machine.mac.writeCount(), 1U) << "that key is read only";
}

TEST(SimulatedMac, TellsAnObserverOfEveryWrite) {
    MacOnVirtualTime machine(macBookPro16());
    std::vector<std::string> seen;
    machine.mac.onWrite([&](std::string_view key, std::span<const std::uint8_t> bytes, SmcResult result) {
        seen.push_back(std::string(key) + " " + std::to_string(bytes[0]) + " " +
                       std::to_string(static_cast<int>(result)));
    });
    machine.mac.setFault("F1Md", KeyFault::writeRefused());
    machine.smc.writeByte("Ftst", 1);
    machine.smc.writeByte("F0Md", 1);
    machine.smc.writeByte("F1Md", 1);
    EXPECT_THAT(seen, testing::ElementsAre("Ftst 1 0", "F0Md 1 0", "F1Md 1 134"));
}

TEST(SimulatedMac, RefusesModesItDoesNotKnow) {
    MacOnVirtualTime machine(macBookPro16());
    EXPECT_EQ(machine.smc.writeByte("F0Md", 2), SmcResult::badArgument);
    EXPECT_EQ(machine.smc.writeByte("F0Md", 255), SmcResult::badArgument);
    EXPECT_FALSE(machine.mac.isFanForced(0));
}

TEST(SimulatedMac, TheForceSwitchChangesNothingWhereItIsNotNeeded) {
    MacOnVirtualTime machine(macBookPro16());
    EXPECT_EQ(machine.smc.writeByte("Ftst", 1), SmcResult::success);
    EXPECT_EQ(machine.smc.readByte("Ftst"), 1);
    machine.smc.writeByte("F0Md", 1);
    EXPECT_EQ(machine.smc.writeByte("Ftst", 0), SmcResult::success);
    EXPECT_TRUE(machine.mac.isFanForced(0));
}

TEST(SimulatedMac, WhereTheForceSwitchIsNeededModeOneIsTakenAfterSomeSecondsOfTrying) {
    MacOnVirtualTime machine(macBookPro14M4());
    EXPECT_EQ(machine.smc.writeByte("F0Md", 1), SmcResult::badCommand);
    machine.time.advance(10s);
    EXPECT_EQ(machine.smc.writeByte("Ftst", 1), SmcResult::success);
    machine.time.advance(10s);
    Duration tried{};
    while (machine.smc.writeByte("F0Md", 1) == SmcResult::badCommand) {
        EXPECT_EQ(machine.smc.readByte("F0Md"), 0);
        machine.smc.writeByte("Ftst", 1);
        machine.time.advance(400ms);
        tried += 400ms;
        ASSERT_LT(tried, 10s);
    }
    EXPECT_EQ(tried, 3600ms) << "the first attempt after 3.5 s";
    EXPECT_TRUE(machine.mac.isFanForced(0));
    EXPECT_EQ(machine.smc.writeByte("F1Md", 1), SmcResult::success);
}

TEST(SimulatedMac, WhereTheForceSwitchIsNeededZeroHandsEveryFanBack) {
    MacOnVirtualTime machine(macBookPro14M4());
    machine.smc.writeByte("Ftst", 1);
    machine.smc.writeByte("F0Md", 1);
    machine.time.advance(4s);
    machine.smc.writeByte("F0Md", 1);
    machine.smc.writeByte("F1Md", 1);
    ASSERT_TRUE(machine.mac.isFanForced(0));
    ASSERT_TRUE(machine.mac.isFanForced(1));
    machine.smc.writeByte("Ftst", 0);
    EXPECT_FALSE(machine.mac.isAnyFanForced());
    EXPECT_EQ(machine.smc.readByte("F0Md"), 0);
    machine.smc.writeByte("Ftst", 1);
    EXPECT_EQ(machine.smc.writeByte("F0Md", 1), SmcResult::badCommand) << "it begins anew";
}

TEST(SimulatedMac, WithoutTheForceSwitchModeOneIsTakenAtOnce) {
    MacOnVirtualTime machine(macBookPro14M5());
    EXPECT_EQ(machine.smc.writeByte("F0md", 1), SmcResult::success);
    EXPECT_TRUE(machine.mac.isFanForced(0));
}

TEST(SimulatedMac, AFanWithUnknownLimitsIsNotForced) {
    MacOnVirtualTime machine(macBookPro16());
    const auto refuses = [&] { return machine.smc.writeByte("F0Md", 1) == SmcResult::badArgument; };
    for (const char* key : {"F0Mn", "F0Mx"}) {
        machine.mac.setFault(key, KeyFault::vanished());
        EXPECT_TRUE(refuses()) << key;
        machine.mac.setFault(key, KeyFault::readFails());
        EXPECT_TRUE(refuses()) << key;
        machine.mac.clearFault(key);
        machine.mac.holdSensor(key, std::numeric_limits<float>::quiet_NaN());
        EXPECT_TRUE(refuses()) << key;
        machine.mac.releaseSensor(key);
    }
    for (const auto& [key, rpm] : {std::pair{"F0Mx", 0.0F}, std::pair{"F0Mx", 0.5F}, std::pair{"F0Mx", 1e30F},
                                   std::pair{"F0Mn", -1.0F}, std::pair{"F0Mn", 1e30F}}) {
        machine.mac.holdSensor(key, rpm);
        EXPECT_TRUE(refuses()) << key << " " << rpm;
        machine.mac.releaseSensor(key);
    }
    EXPECT_FALSE(refuses());
    EXPECT_TRUE(machine.mac.isFanForced(0));
}

TEST(SimulatedMac, HoldsSensorsAtExactValues) {
    MacOnVirtualTime machine(macBookPro16());
    machine.mac.holdSensorsAt(60.0F);
    machine.mac.holdSensor("Tp09", 70.5F);
    machine.time.advance(1min);
    for (const std::string& name : machine.smc.list()) {
        if (name.front() == 'T' && machine.smc.info(name).keyInfo.dataType == fourCharCode("flt ")) {
            EXPECT_EQ(machine.smc.readFloat(name), name == "Tp09" ? 70.5F : 60.0F) << name;
        }
    }
    machine.mac.releaseSensor("T*");
    EXPECT_NEAR(static_cast<double>(machine.smc.readFloat("Te02").value_or(0.0F)),
                machine.mac.dieTemperature(), 0.5);
}

TEST(SimulatedMac, HoldsAnyFloat) {
    MacOnVirtualTime machine(tinyMac());
    constexpr float infinite = std::numeric_limits<float>::infinity();
    machine.mac.holdSensor("Tp09", infinite);
    EXPECT_EQ(machine.smc.readFloat("Tp09"), infinite);
    machine.mac.holdSensor("Tp09", -infinite);
    EXPECT_EQ(machine.smc.readFloat("Tp09"), -infinite);
    machine.mac.holdSensor("Tp09", std::numeric_limits<float>::quiet_NaN());
    EXPECT_NE(machine.smc.readFloat("Tp09"), machine.smc.readFloat("Tp09"));
    machine.mac.holdSensor("FNum", std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(machine.smc.readByte("FNum"), 0);
    machine.mac.holdSensor("FNum", 1e30F);
    EXPECT_EQ(machine.smc.readByte("FNum"), 255);
}

TEST(SimulatedMac, AVanishedKeyIsNeitherListedNorKnown) {
    MacOnVirtualTime machine(macBookPro16());
    const std::size_t before = machine.smc.list().size();
    machine.mac.setFault("Tp09", KeyFault::vanished());
    machine.mac.setFault("F0Md", KeyFault::vanished());
    EXPECT_EQ(machine.smc.info("Tp09").result, 0x84);
    EXPECT_EQ(machine.smc.readResult("Tp09"), SmcResult::keyNotFound);
    EXPECT_EQ(machine.smc.writeByte("F0Md", 1), SmcResult::keyNotFound);
    EXPECT_EQ(machine.smc.list().size(), before - 2);
    EXPECT_EQ(machine.smc.read("#KEY").bytes[3], (before - 2) % 256);
    EXPECT_EQ(machine.smc.readResult("Tp0A"), SmcResult::success) << "its neighbour is what it was";
    machine.mac.clearFaults();
    EXPECT_EQ(machine.smc.readResult("Tp09"), SmcResult::success);
    EXPECT_EQ(machine.smc.list().size(), before);
}

TEST(SimulatedMac, AFailingKeyIsKnownButNotReadable) {
    MacOnVirtualTime machine(tinyMac());
    machine.mac.setFault("Tp09", KeyFault::readFails());
    EXPECT_EQ(machine.smc.info("Tp09").result, 0);
    EXPECT_EQ(machine.smc.readResult("Tp09"), SmcResult::notReadable);
    machine.mac.clearFault("Tp09");
    EXPECT_EQ(machine.smc.readResult("Tp09"), SmcResult::success);
}

TEST(SimulatedMac, AStaleKeyRepeatsItself) {
    MacOnVirtualTime machine(tinyMac());
    const auto before = machine.smc.readFloat("Tp09");
    machine.mac.setFault("Tp09", KeyFault::stale());
    machine.mac.setLoad(20.0);
    machine.time.advance(1min);
    EXPECT_EQ(machine.smc.readFloat("Tp09"), before);
    machine.mac.clearFault("Tp09");
    EXPECT_GT(machine.smc.readFloat("Tp09").value_or(0.0F), *before + 20.0F);
}

TEST(SimulatedMac, ASpikeLastsForSoManyReads) {
    MacOnVirtualTime machine(tinyMac());
    machine.mac.holdSensorsAt(60.0F);
    machine.mac.setFault("Tp09", KeyFault::spike(115.0F));
    EXPECT_EQ(machine.smc.readFloat("Tp09"), 115.0F);
    EXPECT_EQ(machine.smc.readFloat("Tp09"), 60.0F);
    machine.mac.setFault("Tp09", KeyFault::spike(-10.0F, 3));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(machine.smc.readFloat("Tp09"), -10.0F);
    }
    EXPECT_EQ(machine.smc.readFloat("Tp09"), 60.0F);
}

TEST(SimulatedMac, ARefusedWriteChangesNothing) {
    MacOnVirtualTime machine(macBookPro16());
    machine.mac.setFault("F0Tg", KeyFault::writeRefused());
    machine.mac.setFault("F1Md", KeyFault::writeRefused());
    machine.smc.writeByte("F0Md", 1);
    EXPECT_EQ(machine.smc.writeFloat("F0Tg", 4000.0F), SmcResult::notWritable);
    EXPECT_EQ(machine.smc.writeByte("F1Md", 1), SmcResult::notWritable);
    EXPECT_EQ(machine.mac.lastWrittenTarget(0), std::nullopt);
    EXPECT_FALSE(machine.mac.isFanForced(1));
    EXPECT_EQ(machine.smc.readFloat("F0Tg"), 0.0F);
    machine.mac.clearFaults();
    EXPECT_EQ(machine.smc.writeFloat("F0Tg", 4000.0F), SmcResult::success);
}

TEST(SimulatedMac, AFanThatNeverReadsAutomaticStaysForcedWithModeOne) {
    MacOnVirtualTime machine(macBookPro16());
    machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1));
    machine.smc.writeByte("F0Md", 1);
    EXPECT_EQ(machine.smc.writeByte("F0Md", 0), SmcResult::success);
    EXPECT_EQ(machine.smc.readByte("F0Md"), 1);
    EXPECT_TRUE(machine.mac.isFanForced(0));
    machine.mac.clearFaults();
    EXPECT_TRUE(machine.mac.isFanForced(0)) << "until it is handed back";
    machine.smc.writeByte("F0Md", 0);
    EXPECT_EQ(machine.smc.readByte("F0Md"), 0);
}

TEST(SimulatedMac, AFanInSystemModeReadsThreeAndIsTheFirmwares) {
    MacOnVirtualTime machine(macBookPro16());
    machine.mac.setFault("F0Md", KeyFault::neverAutomatic(3));
    EXPECT_EQ(machine.smc.readByte("F0Md"), 3);
    machine.smc.writeByte("F0Md", 1);
    EXPECT_EQ(machine.smc.readByte("F0Md"), 1);
    machine.smc.writeByte("F0Md", 0);
    EXPECT_EQ(machine.smc.readByte("F0Md"), 3);
    EXPECT_FALSE(machine.mac.isFanForced(0));
    EXPECT_EQ(machine.smc.readByte("F1Md"), 0);
}

TEST(SimulatedMac, FaultsAreSetOnAllKeysThatBeginAlike) {
    MacOnVirtualTime machine(macBookPro16());
    machine.mac.setFault("Tp*", KeyFault::readFails());
    EXPECT_EQ(machine.smc.readResult("Tp00"), SmcResult::notReadable);
    EXPECT_EQ(machine.smc.readResult("Tp0c"), SmcResult::notReadable);
    EXPECT_EQ(machine.smc.readResult("Te00"), SmcResult::success);
    EXPECT_EQ(machine.smc.readResult("TPD0"), SmcResult::success);
}

TEST(SimulatedMac, UnknownKeysAreAnError) {
    MacOnVirtualTime machine(tinyMac());
    EXPECT_THROW(machine.mac.setFault("Tp99", KeyFault::stale()), std::invalid_argument);
    EXPECT_THROW(machine.mac.holdSensor("Tp0", 1.0F), std::invalid_argument);
    EXPECT_THROW(machine.mac.holdSensor("Tp09x*", 1.0F), std::invalid_argument);
    EXPECT_THROW(machine.mac.clearFault(""), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(machine.mac.fanSpeed(1)), std::out_of_range);
}

TEST(SimulatedMac, WithoutAnSmcServiceNothingOpens) {
    MacOnVirtualTime machine(tinyMac());
    EXPECT_EQ(machine.connection.open(), 0);
    machine.mac.setSmcPresent(false);
    EXPECT_EQ(machine.connection.open(), -1);
    SmcRecord record;
    EXPECT_EQ(machine.connection.exchange(record), -1);
    machine.mac.setSmcPresent(true);
    EXPECT_EQ(machine.connection.open(), 0);
}

}  // namespace
}  // namespace corvane
