#include "tests/app/menu/MenuMachine.h"

namespace corvane {
namespace {

using testing::ElementsAre;

/// Fans that are on, in manual mode.
class MenuBoost : public MenuFanTest {
protected:
    MenuBoost() {
        switchOnManually();
        static_cast<void>(machine.takeRequests());
    }
};

TEST_F(MenuBoost, LastsAsLongAsTheChipSays) {
    menu().applyFanDuration(300);
    EXPECT_EQ(fan().boostDuration(), 300);
    EXPECT_EQ(fan().boostExpiresAt(), machine.mainLoop.bootTime() + 300s);
    machine.advance(299s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
    machine.advance(2s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_FALSE(fan().fansEnabled());
}

TEST_F(MenuBoost, KeepsTheFloorThatIsHeld) {
    fan().setManualFloor(60);
    machine.settle();
    static_cast<void>(machine.takeRequests());
    menu().applyFanDuration(60);
    machine.settle();
    EXPECT_THAT(machine.takeRequests(), ElementsAre("floor 60"));
    EXPECT_EQ(fan().manualPercent(), 60);
}

TEST_F(MenuBoost, TakesTheManualFloorWhenNoneIsHeld) {
    fan().setManualFloor(60);
    fan().resetBoost();
    machine.settle();
    static_cast<void>(machine.takeRequests());
    ASSERT_EQ(fan().targetPercent(), 0);
    menu().applyFanDuration(60);
    machine.settle();
    EXPECT_THAT(machine.takeRequests(), ElementsAre("floor 60"));
}

TEST_F(MenuBoost, WarnsOfHalfAnHourAndMore) {
    SignalCount changes(menu(), &MenuState::coolingTextsChanged);
    EXPECT_FALSE(menu().showsLongBoostWarning()) << "ten minutes, to begin with";
    menu().applyFanDuration(1800);
    EXPECT_TRUE(menu().showsLongBoostWarning());
    EXPECT_GE(changes.take(), 1);
    menu().applyFanDuration(3600);
    EXPECT_TRUE(menu().showsLongBoostWarning());
    menu().applyFanDuration(600);
    EXPECT_FALSE(menu().showsLongBoostWarning());
    fan().setBoostDuration(1799.5);
    EXPECT_FALSE(menu().showsLongBoostWarning());
}

}  // namespace
}  // namespace corvane
