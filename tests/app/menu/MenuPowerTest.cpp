// The battery's chip and hint.

#include "tests/app/awake/Battery.h"
#include "tests/app/menu/MenuMachine.h"

namespace corvane {
namespace {

class MenuPower : public MenuTest {
protected:
    void look() { menu().panelAppeared(); }
};

TEST_F(MenuPower, ShowsNoBatteryWhereThereIsNone) {
    look();
    EXPECT_FALSE(menu().batteryVisible());
    EXPECT_EQ(menu().batteryCharge(), "");
    EXPECT_FALSE(menu().batteryIsLow());
}

TEST_F(MenuPower, KnowsTheBatteryFromItsStart) {
    machine.powerSources.set(onBattery(85));
    machine.openMenu();
    EXPECT_TRUE(menu().batteryVisible());
    EXPECT_EQ(menu().batteryCharge(), "85%");
}

TEST_F(MenuPower, ShowsTheBatteryAsItIsWhenThePanelAppears) {
    machine.powerSources.set(onBattery(20));
    EXPECT_FALSE(menu().batteryVisible());
    look();
    EXPECT_TRUE(menu().batteryVisible());
    EXPECT_EQ(menu().batterySymbol(), "battery.25");
    EXPECT_EQ(menu().batteryCharge(), "20%");
    EXPECT_TRUE(menu().batteryIsLow());
    machine.powerSources.set(onMains(21));
    look();
    EXPECT_EQ(menu().batterySymbol(), "battery.100.bolt");
    EXPECT_FALSE(menu().batteryIsLow());
}

TEST_F(MenuPower, LooksAgainEveryFiveSecondsWhileThePanelIsShown) {
    look();
    machine.powerSources.set(onBattery(60));
    machine.advance(4999ms);
    EXPECT_FALSE(menu().batteryVisible());
    machine.advance(1ms);
    EXPECT_EQ(menu().batteryCharge(), "60%");
    machine.powerSources.set(onBattery(59));
    machine.advance(5s);
    EXPECT_EQ(menu().batteryCharge(), "59%");
    menu().panelDisappeared();
    machine.powerSources.set(onBattery(58));
    machine.advance(1min);
    EXPECT_EQ(menu().batteryCharge(), "59%");
}

TEST_F(MenuPower, AnnouncesJustChanges) {
    look();
    SignalCount changes(menu(), &MenuState::powerChanged);
    machine.advance(1min);
    EXPECT_EQ(changes.take(), 0);
    machine.powerSources.set(onBattery(60));
    machine.advance(1min);
    EXPECT_EQ(changes.take(), 1);
}

TEST_F(MenuPower, HintsOnBatteryJustWhileSomethingIsKeptGoing) {
    machine.powerSources.set(onBattery(60));
    look();
    EXPECT_FALSE(menu().batteryHint());
    SignalCount changes(menu(), &MenuState::batteryHintChanged);
    manager().apply({Kind::network}, std::nullopt);
    EXPECT_TRUE(menu().batteryHint());
    EXPECT_GE(changes.take(), 1);
    manager().stopSession();
    EXPECT_FALSE(menu().batteryHint());
    EXPECT_GE(changes.take(), 1);

    manager().lid().setEnabled(true);
    EXPECT_TRUE(menu().batteryHint());
    EXPECT_GE(changes.take(), 1);
    manager().lid().setEnabled(false);
    EXPECT_FALSE(menu().batteryHint());

    manager().drives().setEnabled(true);
    EXPECT_FALSE(menu().batteryHint()) << "the drives are none of the three";
}

TEST_F(MenuPower, DoesNotHintOnMainsOrWithoutABattery) {
    manager().apply({Kind::system}, std::nullopt);
    look();
    EXPECT_FALSE(menu().batteryHint());
    machine.powerSources.set(onMains(60));
    look();
    EXPECT_FALSE(menu().batteryHint());
    machine.powerSources.set(onBattery(60));
    SignalCount changes(menu(), &MenuState::batteryHintChanged);
    look();
    EXPECT_TRUE(menu().batteryHint());
    EXPECT_GE(changes.take(), 1) << "the computer was unplugged";
}

TEST_F(MenuFanTest, HintsOnBatteryWhileABoostRuns) {
    machine.powerSources.set(onBattery(60));
    menu().panelAppeared();
    EXPECT_FALSE(menu().batteryHint());
    SignalCount changes(menu(), &MenuState::batteryHintChanged);
    switchOnManually();
    EXPECT_TRUE(menu().batteryHint());
    EXPECT_GE(changes.take(), 1);
}

}  // namespace
}  // namespace corvane
