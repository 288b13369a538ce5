#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/macos/FanLimitGuard.h"
#include "platform/simulated/SimulatedSmc.h"
#include "platform/simulated/VirtualTime.h"
#include "smc/SmcSession.h"
#include "smc/csmc.h"

namespace corvane {
namespace {

/// A controller that forces any fan it is told to, and notes that it was.
class ObedientSmc final : public SmcConnection {
public:
    ObedientSmc(SimulatedMac& mac, int& forced) : smc_(mac), forced_(forced) {}

    std::int32_t open() override { return smc_.open(); }
    std::int32_t exchange(SmcRecord& record) override {
        const bool isMode = (record.key & 0xFFFFU) == (std::uint32_t{'M'} << 8U | 'd');
        if (isMode && record.data8 == static_cast<std::uint8_t>(SmcCommand::writeKey) &&
            record.bytes[0] == 1) {
            ++forced_;
            record.result = 0;
            return 0;
        }
        return smc_.exchange(record);
    }

private:
    SimulatedSmc smc_;
    int& forced_;
};

class FanLimitGuardTest : public testing::Test {
protected:
    VirtualTime time;
    SimulatedMac mac{{}, [this] { return time.bootTime(); }};
    int forced = 0;
    SmcSession session{std::make_unique<FanLimitGuard>(std::make_unique<ObedientSmc>(mac, forced))};

    void SetUp() override { ASSERT_EQ(csmc_open(), 0); }
};

constexpr auto refused = static_cast<std::int32_t>(SmcResult::badArgument);

TEST_F(FanLimitGuardTest, ForcesAFanWhoseLimitsCanBeRead) {
    EXPECT_EQ(csmc_write_u8("F0Md", 1), 0);
    EXPECT_EQ(forced, 1);
}

TEST_F(FanLimitGuardTest, ForcesNoFanWhoseLimitsCannotBeReadUntilTheyCan) {
    for (const char* limit : {"F1Mn", "F1Mx"}) {
        for (const KeyFault fault : {KeyFault::readFails(), KeyFault::vanished()}) {
            mac.setFault(limit, fault);
            EXPECT_EQ(csmc_write_u8("F1Md", 1), refused) << limit;
            EXPECT_EQ(forced, 0);
            mac.clearFaults();
        }
    }
    EXPECT_EQ(csmc_write_u8("F1Md", 1), 0);
    EXPECT_EQ(forced, 1);
}

TEST_F(FanLimitGuardTest, ForcesNoFanWhoseFastestSpeedIsNone) {
    mac.holdSensor("F0Mx", 0.0F);
    EXPECT_EQ(csmc_write_u8("F0Md", 1), refused);
    EXPECT_EQ(forced, 0);
}

TEST_F(FanLimitGuardTest, ForcesNoFanWhoseLimitsAreImplausible) {
    for (const auto& [limit, rpm] :
         {std::pair{"F0Mn", -1.0F}, std::pair{"F0Mn", 2147483648.0F}, std::pair{"F0Mx", 0.5F},
          std::pair{"F0Mx", 1e30F}, std::pair{"F0Mn", std::numeric_limits<float>::quiet_NaN()},
          std::pair{"F0Mx", std::numeric_limits<float>::infinity()}}) {
        mac.holdSensor(limit, rpm);
        EXPECT_EQ(csmc_write_u8("F0Md", 1), refused) << limit << " " << rpm;
        mac.releaseSensor(limit);
    }
    EXPECT_EQ(forced, 0);
}

TEST_F(FanLimitGuardTest, RemembersLimitsThatWereReadOnce) {
    EXPECT_EQ(csmc_write_u8("F0Md", 1), 0);
    mac.setFault("F0Mx", KeyFault::readFails());
    EXPECT_EQ(csmc_write_u8("F0Md", 1), 0);
    EXPECT_EQ(forced, 2);
}

TEST_F(FanLimitGuardTest, HandsBackAnyFanAndPassesEverythingElseOn) {
    mac.setFault("F0Mx", KeyFault::readFails());
    EXPECT_EQ(csmc_write_u8("F0Md", 0), 0);
    EXPECT_EQ(csmc_write_flt("F0Tg", 3000.0F), 0);
    EXPECT_EQ(mac.lastWrittenTarget(0), 3000.0F);
    EXPECT_EQ(csmc_read_u8("FNum", nullptr), 2);
}

}  // namespace
}  // namespace corvane
