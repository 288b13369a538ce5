#include <chrono>
#include <limits>
#include <optional>

#include "smc/SmcSession.h"
#include "smc/diagnostics/FanUnderTest.h"
#include "tests/diagnostics/DiagnosticsFixture.h"

namespace corvane {
namespace {

using std::chrono::milliseconds;

class FanUnderTestRestores : public testing::Test {
protected:
    DiagnosticsPlatform platform;
    SmcSession session{platform.makeSmcConnection()};
    SimulatedMac& mac = platform.machine.mac;
};

TEST_F(FanUnderTestRestores, ByAutomaticModeWhereTheSavedModeCannotBeWritten) {
    mac.setFault("F0Md", KeyFault::neverAutomatic(3));
    FanUnderTest fan(0);
    ASSERT_EQ(fan.savedMode(), 3);
    EXPECT_EQ(fan.writeMode(FanUnderTest::forcedMode), 0);
    ASSERT_TRUE(mac.isFanForced(0));
    EXPECT_TRUE(fan.restore(platform.pauses));
    EXPECT_FALSE(mac.isFanForced(0));
}

TEST_F(FanUnderTestRestores, AgainUntilItReadsBack) {
    FanUnderTest fan(0);
    fan.writeMode(FanUnderTest::forcedMode);
    mac.setFault("F0Md", KeyFault::writeRefused());
    platform.pauses.at(milliseconds(300), [&] { mac.clearFaults(); });
    const BootTime start = platform.pauses.bootTime();
    EXPECT_TRUE(fan.restore(platform.pauses));
    EXPECT_EQ(platform.pauses.bootTime() - start, milliseconds(360));
    EXPECT_FALSE(mac.isFanForced(0));
}

TEST_F(FanUnderTestRestores, WithTheSamePausesAfterATerminationSignal) {
    platform.pauses.signalAfter(milliseconds(0));
    platform.pauses.holdTerminationSignals();
    ASSERT_FALSE(platform.pauses.pause(milliseconds(100)));
    FanUnderTest fan(0);
    fan.writeMode(FanUnderTest::forcedMode);
    mac.setFault("F0Md", KeyFault::writeRefused());
    platform.pauses.at(milliseconds(300), [&] { mac.clearFaults(); });
    const BootTime start = platform.pauses.bootTime();
    EXPECT_TRUE(fan.restore(platform.pauses));
    EXPECT_EQ(platform.pauses.bootTime() - start, milliseconds(360));
    EXPECT_FALSE(mac.isFanForced(0));
}

TEST_F(FanUnderTestRestores, FiveTimesAtMostAndThenKeepsTheSpeed) {
    FanUnderTest fan(0);
    fan.writeMode(FanUnderTest::forcedMode);
    fan.writeTarget(5000.0F);
    mac.setFault("F0Md", KeyFault::writeRefused());
    const std::uint64_t writes = mac.writeCount();
    const BootTime start = platform.pauses.bootTime();
    EXPECT_FALSE(fan.restore(platform.pauses));
    EXPECT_EQ(platform.pauses.bootTime() - start, milliseconds(600));
    EXPECT_EQ(mac.writeCount() - writes, 10U);
    EXPECT_EQ(mac.fanTarget(0), 5000.0);
}

TEST_F(FanUnderTestRestores, ByTheCodeOfTheWriteWhereTheModeCannotBeRead) {
    mac.setFault("F0Md", KeyFault::readFails());
    FanUnderTest fan(0);
    EXPECT_EQ(fan.savedMode(), FanUnderTest::automaticMode);
    fan.writeMode(FanUnderTest::forcedMode);
    ASSERT_TRUE(mac.isFanForced(0));
    EXPECT_TRUE(fan.restore(platform.pauses));
    EXPECT_FALSE(mac.isFanForced(0));
}

TEST_F(FanUnderTestRestores, NotWhenTheModeKeyIsGoneWhileTheFanIsForced) {
    FanUnderTest fan(0);
    fan.writeMode(FanUnderTest::forcedMode);
    mac.setFault("F0Md", KeyFault::vanished());
    EXPECT_FALSE(fan.restore(platform.pauses));
}

TEST_F(FanUnderTestRestores, NoTargetThatWasNotRead) {
    mac.holdSensor("F0Tg", std::numeric_limits<float>::quiet_NaN());
    FanUnderTest fan(0);
    fan.writeMode(FanUnderTest::forcedMode);
    EXPECT_TRUE(fan.restore(platform.pauses));
    EXPECT_EQ(mac.lastWrittenTarget(0), std::nullopt);
}

TEST_F(FanUnderTestRestores, WithoutHavingWrittenAnythingBefore) {
    const FanUnderTest fan(0);
    EXPECT_EQ(mac.writeCount(), 0U);
    EXPECT_EQ(fan.demand(), 0.0F);
}

}  // namespace
}  // namespace corvane
