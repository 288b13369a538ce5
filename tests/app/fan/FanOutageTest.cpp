// What becomes of fans and state while application and helper do not understand each other.

#include "tests/app/fan/ConnectedMachine.h"
#include "tests/support/oddNumbers.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(FanOutage, LetsTheHelperReleaseTheFansWhenItIsCutOff) {
    ConnectedMachine machine;
    machine.boost();
    machine.host.failCallsWith("no");
    machine.advance(1s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    machine.advance(9s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
}

TEST(FanOutage, LetsTheHelperReleaseTheFansWhenItIsOnlyDeaf) {
    ConnectedMachine machine;
    machine.boost();
    machine.host.setHung(true);
    machine.advance(10s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    machine.host.setHung(false);
    machine.advance(60s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    machine.fan->setManualFloor(70);
    machine.advance(1s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_EQ(machine.message(), "");
}

TEST(FanOutage, ForgetsABoostThatIsSwitchedOffWithoutAConnection) {
    ConnectedMachine machine;
    machine.boost();
    machine.host.failCallsWith("no");
    machine.advance(1s);
    machine.fan->setFansEnabled(false);
    EXPECT_FALSE(machine.fan->isBoosted());
    EXPECT_EQ(machine.fan->targetPercent(), 0);
    EXPECT_EQ(machine.fan->boostExpiresAt(), std::nullopt);
    EXPECT_FALSE(machine.fan->fansEnabled());
}

TEST(FanOutage, HandsTheFansBackWhenTheHelperIsKilledDuringABoost) {
    ConnectedMachine machine;
    machine.boost();
    machine.killHelper();
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    machine.advance(1s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_FALSE(machine.fan->isBoosted());
    EXPECT_TRUE(machine.fan->fansEnabled());
    EXPECT_EQ(machine.fan->targetPercent(), 60);
    EXPECT_NE(machine.fan->boostExpiresAt(), std::nullopt);
    machine.advance(60s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_THAT(machine.log.lines(),
                ElementsAre("Corvane: the fan helper has gone, the next call starts it again"));
}

TEST(FanOutage, BoostsAgainOnRequestAfterTheHelperWasKilled) {
    ConnectedMachine machine;
    machine.boost();
    machine.killHelper();
    machine.advance(10s);
    machine.fan->setManualFloor(70);
    machine.settle();
    EXPECT_TRUE(machine.fan->isBoosted());
    EXPECT_TRUE(machine.fan->spinningUp());
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_EQ(machine.fan->effectivePercent(), 70);
    EXPECT_EQ(machine.message(), "");
}

TEST(FanOutage, EndsTheBoostOfAKilledHelperOnTime) {
    ConnectedMachine machine;
    machine.boost();
    machine.killHelper();
    machine.advance(600s);
    EXPECT_FALSE(machine.fan->fansEnabled());
    EXPECT_EQ(machine.fan->targetPercent(), 0);
    EXPECT_THAT(machine.postedTitles(), testing::ElementsAre("Fan boost finished"));
}

TEST(FanOutage, AsksAKilledHelperForAnAutomaticFloorOnceItDiffers) {
    ConnectedMachine machine(68);
    machine.fan->setAuto(true);
    machine.advance(2s);
    ASSERT_TRUE(machine.helper.mac.isAnyFanForced());
    machine.killHelper();
    machine.advance(20s);
    EXPECT_TRUE(machine.fan->autoEngaged());
    EXPECT_FALSE(machine.fan->isBoosted());
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    machine.helper.mac.holdSensorsAt(70);
    machine.advance(16s);
    EXPECT_TRUE(machine.fan->isBoosted());
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
}

TEST(FanOutage, ReleasesWhatAKilledApplicationLeftOfALidLock) {
    ConnectedMachine machine;
    machine.fan->setLidStayAwake(true);
    machine.advance(2s);
    machine.fan.reset();
    machine.open();
    machine.advance(4s);
    EXPECT_FALSE(machine.helper.sleepSetting.isSleepDisabled());
}

TEST(FanOutage, LivesThroughAMinuteOfGarbage) {
    ConnectedMachine machine;
    machine.boost();
    const QList<FanInfo> fans = machine.fan->fans();
    int count = 0;
    machine.report([&count] {
        const std::vector<StatusValue> garbage = {std::monostate(),          7,
                                                  notANumber<double>,        -infinite<double>,
                                                  std::string("ä\0\xff", 4), std::vector<StatusRecord>(3)};
        const StatusValue& value = garbage[static_cast<std::size_t>(count++) % garbage.size()];
        const bool isListed = std::holds_alternative<std::vector<StatusRecord>>(value);
        return recordOf({{"fans", isListed ? StatusValue(std::monostate()) : value},
                         {"isBoosted", value},
                         {"cpuTemp", value},
                         {"gpuTemp", value},
                         {"thermalOverride", value},
                         {"effectivePercent", value},
                         {"lidStayAwake", value}});
    });
    machine.advance(60s);
    EXPECT_GE(count, 60);
    EXPECT_EQ(machine.fan->fans(), fans);
    EXPECT_TRUE(machine.fan->isBoosted());
    EXPECT_EQ(machine.fan->cpuTemp(), 50);
    EXPECT_EQ(machine.fan->cpuTempSmoothed(), 50);
    EXPECT_EQ(machine.fan->effectivePercent(), 0);
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    EXPECT_EQ(machine.message(), "");
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
    EXPECT_THAT(machine.center.posted(), IsEmpty());

    machine.reportAsIs();
    machine.advance(1s);
    EXPECT_EQ(machine.fan->effectivePercent(), 60);
    EXPECT_TRUE(machine.fan->isBoosted());
}

}  // namespace
}  // namespace corvane
