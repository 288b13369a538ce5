#include <gtest/gtest.h>

#include "tests/app/fan/FanMachine.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

struct FanLid : testing::Test {
    FanController& fan() { return *machine.fan; }
    bool isLockedByHelper() { return *machine.helper.status().get<bool>(StatusKey::lidStayAwake); }
    bool isSleepDisabled() { return machine.helper.sleepSetting.isSleepDisabled(); }

    FanMachine machine;
};

TEST_F(FanLid, IsLockedByTheHelperForAsLongAsItIsWanted) {
    machine.openAt(50);
    fan().setLidStayAwake(true);
    EXPECT_TRUE(fan().intendedLidLock());
    machine.advance(1h);
    EXPECT_TRUE(isSleepDisabled());
    EXPECT_TRUE(isLockedByHelper());
    EXPECT_EQ(machine.takeRequests(), Texts{"lid on"});
    EXPECT_EQ(machine.log.count("self-heal"), 0U);
    fan().setLidStayAwake(false);
    EXPECT_FALSE(fan().intendedLidLock());
    machine.settle();
    EXPECT_FALSE(isSleepDisabled());
    EXPECT_FALSE(isLockedByHelper());
    EXPECT_EQ(machine.takeRequests(), Texts{"lid off"});
}

TEST_F(FanLid, IsSentAsOftenAsItIsAskedFor) {
    machine.openAt(50);
    fan().setLidStayAwake(true);
    fan().setLidStayAwake(true);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), (Texts{"lid on", "lid on"}));
}

TEST_F(FanLid, OpensAConnection) {
    machine.openAt(50);
    machine.host.failCallsWith("gone");
    machine.advance(1s);
    ASSERT_EQ(machine.host.connectionCount(), 0U);
    machine.host.failCallsWith("");
    fan().setLidStayAwake(true);
    machine.settle();
    EXPECT_TRUE(isSleepDisabled());
}

TEST_F(FanLid, IsAskedForEvenWithoutAHelperAndTheLossShows) {
    machine.installer.setInstalled(false);
    machine.host.setInstalled(false);
    machine.open();
    ASSERT_EQ(machine.host.connectionCount(), 0U);
    fan().setLidStayAwake(true);
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    machine.settle();
    EXPECT_TRUE(fan().intendedLidLock());
    EXPECT_EQ(machine.host.connectionCount(), 0U);
    EXPECT_EQ(fan().statusMessage(), "Helper-Verbindung verloren");
}

TEST_F(FanLid, LeavesNoMessageWhateverTheHelperAnswers) {
    machine.openAt(50);
    machine.helper.sleepSetting.failWith("no such tool");
    fan().setLidStayAwake(true);
    machine.advance(2s);
    EXPECT_EQ(fan().statusMessage(), "");
}

/// A helper that an earlier run of the application left forcing fans and lid.
class FanLaunch : public FanLid {
protected:
    FanLaunch() {
        machine.openAt(62);
        fan().setFansEnabled(true);
        fan().setLidStayAwake(true);
        machine.advance(2s);
        machine.fan.reset();
        static_cast<void>(machine.takeRequests());
        EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
        EXPECT_TRUE(isSleepDisabled());
        machine.open();
    }
};

TEST_F(FanLaunch, ReleasesWhatAnEarlierRunLeftForced) {
    fan().reconcileToOffOnLaunch();
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), (Texts{"stop", "lid off"}));
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_EQ(machine.heldFloor(), 0);
    EXPECT_FALSE(isSleepDisabled());
    EXPECT_FALSE(isLockedByHelper());
    machine.advance(20s);
    EXPECT_EQ(machine.log.count("self-heal"), 0U);
}

TEST_F(FanLaunch, WantsNoLockAnyMore) {
    fan().setLidStayAwake(true);
    fan().reconcileToOffOnLaunch();
    EXPECT_FALSE(fan().intendedLidLock());
}

TEST_F(FanLaunch, ForgottenIsMadeUpForByTheSelfHealing) {
    machine.advance(4s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_FALSE(isSleepDisabled());
    EXPECT_EQ(machine.takeRequests(), (Texts{"stop", "lid off"}));
    EXPECT_EQ(machine.log.lines(), Texts{"Corvane: self-heal — daemon forcing unintended state "
                                         "(fans=yes lid=yes), releasing"});
}

TEST_F(FanLid, ConnectsAtLaunchEvenWithoutAHelperAndTheLossShows) {
    machine.installer.setInstalled(false);
    machine.host.setInstalled(false);
    machine.open();
    fan().reconcileToOffOnLaunch();
    EXPECT_EQ(machine.host.connectionCount(), 1U);
    machine.settle();
    EXPECT_EQ(fan().statusMessage(), "Helper-Verbindung verloren");
}

}  // namespace
}  // namespace corvane
