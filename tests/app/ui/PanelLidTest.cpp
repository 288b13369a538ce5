#include "tests/app/ui/PanelTest.h"

namespace corvane {
namespace {

class PanelLid : public PanelTest {
protected:
    bool isWarned() { return machine.defaults.get<bool>(MenuState::closedLidWarnedSetting).value_or(false); }
    void clickSwitch() {
        click("closedLidSection/switch");
        waitForPopups();
    }
};

TEST_F(PanelLid, AsksBeforeTheFirstTime) {
    open();
    EXPECT_EQ(text("closedLidSection/header"), "Awake, lid closed");
    clickSwitch();
    EXPECT_FALSE(manager().lid().enabled());
    EXPECT_TRUE(isShown("alertAccept"));
    EXPECT_EQ(text("alertAccept"), "Enable");
    EXPECT_EQ(text("alertReject"), "Cancel");
    click("alertAccept");
    waitForPopups();
    EXPECT_TRUE(manager().lid().enabled());
    EXPECT_TRUE(isWarned());
    EXPECT_TRUE(isOn("closedLidSection/switch"));
    EXPECT_FALSE(isShown("alertAccept"));
    advance(2s);
    EXPECT_TRUE(machine.helper.sleepSetting.isSleepDisabled());
}

TEST_F(PanelLid, StaysOffWhenTheUserDeclinesAndAsksAgain) {
    open();
    clickSwitch();
    click("alertReject");
    waitForPopups();
    EXPECT_FALSE(manager().lid().enabled());
    EXPECT_FALSE(isOn("closedLidSection/switch"));
    EXPECT_FALSE(isWarned());
    clickSwitch();
    EXPECT_TRUE(isShown("alertAccept"));
    press(Qt::Key_Escape);
    waitForPopups();
    EXPECT_FALSE(isShown("alertAccept"));
    EXPECT_FALSE(manager().lid().enabled());
}

TEST_F(PanelLid, TakesEnterForTheFirstButton) {
    open();
    clickSwitch();
    press(Qt::Key_Return);
    EXPECT_TRUE(manager().lid().enabled());
}

TEST_F(PanelLid, DoesNotAskAgainWhoWasWarned) {
    machine.defaults.set(MenuState::closedLidWarnedSetting, true);
    open();
    clickSwitch();
    EXPECT_TRUE(manager().lid().enabled());
    EXPECT_FALSE(isShown("alertAccept"));
    clickSwitch();
    EXPECT_FALSE(manager().lid().enabled());
}

TEST_F(PanelLid, SaysWhatItIsDoing) {
    machine.defaults.set(MenuState::closedLidWarnedSetting, true);
    open();
    click("closedLidSection/header");
    EXPECT_FALSE(isShown("lidActive"));
    EXPECT_FALSE(isShown("lidAutoOff"));
    EXPECT_FALSE(isShown("lidNeedsHelper"));
    clickSwitch();
    EXPECT_TRUE(isShown("lidActive"));
    EXPECT_EQ(text("lidActive"), "Active — stops itself on heat or low battery.");
    machine.thermal.set(ThermalState::critical);
    settle();
    EXPECT_FALSE(manager().lid().enabled());
    EXPECT_FALSE(isShown("lidActive"));
    EXPECT_TRUE(isShown("lidAutoOff"));
    EXPECT_EQ(text("lidAutoOff"), manager().lid().lastAutoOff().toStdString());
}

TEST_F(PanelLid, IsInertWithoutHelper) {
    machine.removeHelper();
    open();
    EXPECT_FALSE(item("closedLidSection/switch").isEnabled());
    clickSwitch();
    EXPECT_FALSE(machine.menu->isAskingAboutLid());
    EXPECT_FALSE(machine.menu->expandLid());
    click("closedLidSection/header");
    EXPECT_EQ(text("lidNeedsHelper"), "Needs the fan helper (install below).");
    EXPECT_TRUE(isShown("lidNeedsHelper"));
}

}  // namespace
}  // namespace corvane
