#include <limits>

#include "tests/app/menu/MenuMachine.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Fans that are on, in manual mode.
class MenuSlider : public MenuFanTest {
protected:
    MenuSlider() {
        switchOnManually();
        static_cast<void>(machine.takeRequests());
    }
};

TEST_F(MenuSlider, IsAppliedOnceItRests) {
    menu().setManualSlider(60);
    EXPECT_EQ(menu().manualSlider(), 60);
    machine.advance(249ms);
    EXPECT_EQ(fan().manualPercent(), 100);
    machine.advance(1ms);
    EXPECT_EQ(fan().manualPercent(), 60);
    machine.settle();
    EXPECT_THAT(machine.takeRequests(), ElementsAre("floor 60"));
}

TEST_F(MenuSlider, IsAppliedOnceForAWholeDrag) {
    for (const double percent : {95.0, 90.0, 85.0, 80.0}) {
        menu().setManualSlider(percent);
        machine.advance(200ms);
        EXPECT_EQ(fan().manualPercent(), 100);
        EXPECT_EQ(menu().manualSlider(), percent);
    }
    machine.advance(1s);
    EXPECT_THAT(machine.takeRequests(), ElementsAre("floor 80"));
}

TEST_F(MenuSlider, IsAppliedAtOnceWhenItIsReleased) {
    menu().setManualSlider(60);
    menu().releaseSlider();
    EXPECT_EQ(fan().manualPercent(), 60);
    machine.advance(1s);
    EXPECT_THAT(machine.takeRequests(), ElementsAre("floor 60")) << "once, not again at its rest";
}

TEST_F(MenuSlider, AsksForNothingWhenItIsReleasedAtRest) {
    menu().setManualSlider(60);
    machine.advance(1s);
    static_cast<void>(machine.takeRequests());
    menu().releaseSlider();
    machine.advance(1s);
    EXPECT_THAT(machine.takeRequests(), IsEmpty());
}

TEST_F(MenuSlider, SwitchesTheFansOffAtZeroAndShowsTheOldValueWhenTheyAreOnAgain) {
    menu().setManualSlider(60);
    menu().releaseSlider();
    menu().setManualSlider(0);
    menu().releaseSlider();
    EXPECT_FALSE(fan().fansEnabled());
    EXPECT_EQ(fan().manualPercent(), 60);
    EXPECT_EQ(menu().manualSlider(), 0);
    machine.advance(1s);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());

    fan().setFansEnabled(true);
    EXPECT_EQ(menu().manualSlider(), 60);
    machine.advance(1s);
    EXPECT_EQ(machine.heldFloor(), 60);
}

TEST_F(MenuSlider, FollowsTheManualFloorWhenItIsSetElsewhere) {
    fan().setManualFloor(45);
    EXPECT_EQ(menu().manualSlider(), 45);
    machine.advance(1s);
    EXPECT_EQ(fan().manualPercent(), 45);
}

TEST_F(MenuSlider, StaysInTheUsersHandWhileTheManualFloorIsSetElsewhere) {
    menu().setManualSlider(60);
    fan().setManualFloor(45);
    EXPECT_EQ(menu().manualSlider(), 60);
    machine.advance(1s);
    EXPECT_EQ(fan().manualPercent(), 60);
}

TEST_F(MenuSlider, ForgetsADragWhenTheFansAreSwitchedOff) {
    menu().setManualSlider(60);
    fan().setFansEnabled(false);
    fan().setFansEnabled(true);
    EXPECT_EQ(menu().manualSlider(), 100);
    machine.advance(1s);
    EXPECT_EQ(fan().manualPercent(), 100);
}

TEST_F(MenuSlider, ShowsWhatHoldsAfterADragThatNobodyHeard) {
    menu().setManualSlider(60);
    fan().setCoolingMode(CoolingMode::automatic);
    machine.advance(1s);
    EXPECT_EQ(fan().manualPercent(), 100);
    EXPECT_EQ(menu().manualSlider(), 100);
}

TEST_F(MenuSlider, StaysWithinItsRange) {
    menu().setManualSlider(std::numeric_limits<double>::infinity());
    EXPECT_EQ(menu().manualSlider(), 100);
    menu().setManualSlider(60);
    menu().setManualSlider(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(menu().manualSlider(), 60);
    menu().setManualSlider(-5);
    EXPECT_EQ(menu().manualSlider(), 0);
}

TEST_F(MenuSlider, LeavesNothingBehindThatWouldApplyLater) {
    menu().setManualSlider(60);
    machine.menu.reset();
    machine.advance(1s);
    EXPECT_EQ(fan().manualPercent(), 100);
}

}  // namespace
}  // namespace corvane
