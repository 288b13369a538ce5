#include <memory>
#include <optional>

#include <mach/mach.h>

#include "platform/macos/IoKitSmc.h"
#include "platform/simulated/VirtualTime.h"
#include "smc/SmcSession.h"
#include "smc/csmc.h"
#include "tests/platform/SmcConnectionContract.h"
#include "tests/platform/macos/fakes/IOKit/FakeSmcService.h"

namespace corvane {
namespace {

/// A Mac's kernel with the service in front of a simulated machine.
struct MacWithSmc {
    VirtualTime time;
    SimulatedMac mac{{}, [this] { return time.bootTime(); }};
    FakeSmcService service{mac};
};

class IoKitSmcRig {
public:
    SmcConnection& connection() { return connection_; }

    std::int32_t openWithoutController() {
        mac_.mac.setSmcPresent(false);
        return connection_.open();
    }

private:
    MacWithSmc mac_;
    IoKitSmc connection_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(IoKitSmc, SmcConnectionContract, IoKitSmcRig);

namespace {

/// Asks for the number of fans.
SmcRecord fanCountRequest() {
    SmcRecord record;
    record.key = fourCharCode("FNum");
    record.keyInfo.dataSize = 1;
    record.data8 = static_cast<std::uint8_t>(SmcCommand::readKey);
    return record;
}

TEST(IoKitSmc, HoldsOneConnectionFromOpeningUntilItsEnd) {
    MacWithSmc mac;
    {
        IoKitSmc smc;
        EXPECT_EQ(mac.service.openConnections(), 0U);
        EXPECT_EQ(smc.open(), 0);
        EXPECT_EQ(smc.open(), 0);
        EXPECT_EQ(mac.service.openConnections(), 1U);
    }
    EXPECT_EQ(mac.service.openConnections(), 0U);
}

TEST(IoKitSmc, FindsAControllerThatAppearsLater) {
    MacWithSmc mac;
    mac.mac.setSmcPresent(false);
    IoKitSmc smc;
    EXPECT_EQ(smc.open(), SmcConnection::noService);
    mac.mac.setSmcPresent(true);
    EXPECT_EQ(smc.open(), 0);
}

TEST(IoKitSmc, FindsNoControllerWithoutAnyService) {
    IoKitSmc smc;
    EXPECT_EQ(smc.open(), SmcConnection::noService);
}

TEST(IoKitSmc, AnswersTheKernelsCodeWhenItMayNotBeOpenedAndMayBeTriedAgain) {
    MacWithSmc mac;
    mac.service.refuseToOpen(kIOReturnNotPrivileged);
    IoKitSmc smc;
    EXPECT_EQ(smc.open(), kIOReturnNotPrivileged);
    EXPECT_EQ(mac.service.openConnections(), 0U);
    mac.service.refuseToOpen(kIOReturnSuccess);
    EXPECT_EQ(smc.open(), 0);
}

TEST(IoKitSmc, AnswersTheKernelsCodeForAnExchangeThatFails) {
    MacWithSmc mac;
    IoKitSmc smc;
    ASSERT_EQ(smc.open(), 0);
    mac.service.failExchanges(kIOReturnNotFound);
    SmcRecord record = fanCountRequest();
    EXPECT_EQ(smc.exchange(record), kIOReturnNotFound);
    mac.service.failExchanges(kIOReturnSuccess);
    record = fanCountRequest();
    EXPECT_EQ(smc.exchange(record), 0);
    EXPECT_EQ(record.bytes[0], 2);
}

TEST(IoKitSmc, ExchangesNothingBeforeItIsOpen) {
    MacWithSmc mac;
    IoKitSmc smc;
    SmcRecord record = fanCountRequest();
    EXPECT_EQ(smc.exchange(record), MACH_SEND_INVALID_DEST);
}

TEST(IoKitSmc, TakesNoHalfARecordForAnAnswer) {
    MacWithSmc mac;
    IoKitSmc smc;
    ASSERT_EQ(smc.open(), 0);
    mac.service.cutAnswersOffAt(48);
    SmcRecord record = fanCountRequest();
    EXPECT_EQ(smc.exchange(record), kIOReturnUnderrun);
}

TEST(IoKitSmc, NoticesThatTheControllerHasGone) {
    MacWithSmc mac;
    IoKitSmc smc;
    ASSERT_EQ(smc.open(), 0);
    mac.mac.setSmcPresent(false);
    SmcRecord record = fanCountRequest();
    EXPECT_EQ(smc.exchange(record), kIOReturnNoDevice);
}

/// The layer over the connection, as the helper uses it.
class CsmcOverIoKit : public testing::Test {
protected:
    MacWithSmc machine;
    SmcSession session{std::make_unique<IoKitSmc>()};
};

TEST_F(CsmcOverIoKit, ReadsTheMachine) {
    std::uint8_t ok = 0;
    EXPECT_EQ(csmc_read_u8("FNum", &ok), 2);
    EXPECT_EQ(ok, 1);
    EXPECT_GT(csmc_read_flt("F0Mx", &ok), 4000.0F);
    EXPECT_EQ(ok, 1);
    EXPECT_EQ(csmc_key_count(), machine.mac.keys().size());
    char key[5] = "";
    EXPECT_EQ(csmc_key_at_index(0, key), 0);
    EXPECT_STREQ(key, "#KEY");
}

TEST_F(CsmcOverIoKit, DrivesAFanAndHandsItBack) {
    EXPECT_EQ(csmc_write_u8("Ftst", 1), 0);
    EXPECT_EQ(csmc_write_u8("F0Md", 1), 0);
    EXPECT_EQ(csmc_write_flt("F0Tg", 4000.0F), 0);
    EXPECT_TRUE(machine.mac.isFanForced(0));
    machine.time.advance(std::chrono::seconds(30));
    EXPECT_NEAR(machine.mac.fanSpeed(0), 4000.0, 50.0);
    EXPECT_EQ(csmc_write_u8("F0Md", 0), 0);
    EXPECT_EQ(csmc_write_u8("Ftst", 0), 0);
    EXPECT_FALSE(machine.mac.isFanForced(0));
}

TEST_F(CsmcOverIoKit, PassesTheControllersResultsThrough) {
    EXPECT_EQ(csmc_key_info("ZZZZ", nullptr, nullptr, nullptr), 0x84);
    EXPECT_EQ(csmc_write_u8("FNum", 1), 0x86);
}

TEST_F(CsmcOverIoKit, PassesTheRefusalOfAWriteThroughForOtherUsersThanRoot) {
    machine.service.setPrivileged(false);
    EXPECT_EQ(csmc_write_u8("F0Md", 1), kIOReturnNotPrivileged);
    EXPECT_FALSE(machine.mac.isFanForced(0));
    std::uint8_t ok = 0;
    EXPECT_EQ(csmc_read_u8("FNum", &ok), 2) << "reading is everybody's";
    EXPECT_EQ(ok, 1);
}

TEST_F(CsmcOverIoKit, AnswersMinusOneWithoutAController) {
    machine.mac.setSmcPresent(false);
    EXPECT_EQ(csmc_open(), -1);
    EXPECT_EQ(csmc_write_u8("F0Md", 1), -1);
    EXPECT_EQ(csmc_key_count(), 0U);
}

}  // namespace
}  // namespace corvane
