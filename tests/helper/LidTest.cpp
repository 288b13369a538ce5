#include "tests/helper/HelperMachine.h"

namespace corvane {
namespace {

using testing::ElementsAre;

bool isHeld(HelperMachine& machine) {
    return *machine.status().get<bool>(StatusKey::lidStayAwake);
}

TEST(Lid, IsSwitchedOnAndOff) {
    HelperMachine machine;
    machine.startAt(60.0F);
    EXPECT_EQ(machine.setLid(true), (Answer{true, "lid-stay-awake on"}));
    EXPECT_TRUE(machine.sleepSetting.isSleepDisabled());
    EXPECT_TRUE(isHeld(machine));
    EXPECT_EQ(machine.setLid(false), (Answer{true, "lid-stay-awake off"}));
    EXPECT_FALSE(machine.sleepSetting.isSleepDisabled());
    EXPECT_FALSE(isHeld(machine));
    EXPECT_THAT(machine.log.lines(), ElementsAre("Corvane daemon: lid-stay-awake ON (disablesleep 1)",
                                                 "Corvane daemon: lid-stay-awake off (disablesleep 0)"));
}

TEST(Lid, IsSwitchedOnTwiceWhenAskedTwice) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setLid(true);
    EXPECT_EQ(machine.setLid(true), (Answer{true, "lid-stay-awake on"}));
    EXPECT_THAT(machine.sleepSetting.calls(), ElementsAre(true, true));
}

TEST(Lid, IsSwitchedOffEvenWhenItIsOff) {
    HelperMachine machine;
    machine.startAt(60.0F);
    EXPECT_EQ(machine.setLid(false), (Answer{true, "lid-stay-awake off"}));
    EXPECT_THAT(machine.sleepSetting.calls(), ElementsAre(false));
}

TEST(Lid, AFailureIsLoggedButNotReported) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.sleepSetting.failWith("the tool is missing");
    EXPECT_EQ(machine.setLid(true), (Answer{true, "lid-stay-awake on"}));
    EXPECT_TRUE(isHeld(machine)) << "it keeps what was asked for";
    EXPECT_THAT(machine.log.lines(),
                ElementsAre("Corvane daemon: pmset disablesleep failed: the tool is missing",
                            "Corvane daemon: lid-stay-awake ON (disablesleep 1)"));
}

TEST(Lid, AFailedOneIsStillSwitchedBackByTheWatchdog) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.sleepSetting.failWith("busy");
    machine.setLid(true);
    machine.advance(8s);
    EXPECT_THAT(machine.sleepSetting.calls(), ElementsAre(true, false));
}

TEST(Lid, IsSwitchedBackWithin8SecondsAfterTheApplicationVanished) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setLid(true);
    machine.advanceInContact(1min);
    EXPECT_TRUE(machine.sleepSetting.isSleepDisabled());
    machine.advance(8s);
    EXPECT_FALSE(machine.sleepSetting.isSleepDisabled());
}

TEST(Lid, HasNothingToDoWithTheBoost) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.setLid(true);
    machine.stopBoost();
    EXPECT_TRUE(machine.sleepSetting.isSleepDisabled());
    machine.setFloor(30.0);
    machine.setLid(false);
    EXPECT_TRUE(machine.mac.isFanForced(0));
}

}  // namespace
}  // namespace corvane
