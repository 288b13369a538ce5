// What the panel's state begins with, and what opening the panel does.

#include "app/shell/LocalTime.h"
#include "tests/app/menu/MenuMachine.h"

namespace corvane {
namespace {

using testing::ElementsAre;

MATCHER_P2(Chip, label, seconds, "") {
    return arg.label == label && arg.seconds == seconds;
}

using MenuPanel = MenuTest;
using MenuPanelWithHelper = MenuFanTest;

// What it begins with

TEST_F(MenuPanel, BeginsWithEverythingCollapsedAndNothingAsked) {
    EXPECT_FALSE(menu().expandAwake());
    EXPECT_FALSE(menu().expandLid());
    EXPECT_FALSE(menu().expandAuto());
    EXPECT_FALSE(menu().expandDrives());
    EXPECT_FALSE(menu().expandFans());
    EXPECT_FALSE(menu().showingCustomPicker());
    EXPECT_FALSE(menu().isAskingAboutLid());
    EXPECT_EQ(menu().manualSlider(), 100);
    EXPECT_EQ(menu().selectedSleepSeconds(), 0);
}

TEST_F(MenuPanel, CapturesTheCustomEndAtItsStart) {
    const QDateTime end = localTime(in(12h));
    machine.advance(3h);
    menu().panelAppeared();
    EXPECT_EQ(menu().customDate(), end);
}

TEST_F(MenuPanel, OffersTheDurationsInTheirOrder) {
    EXPECT_THAT(menu().sleepDurations(),
                ElementsAre(Chip("1 h", 3600), Chip("4 h", 14400), Chip("8 h", 28800), Chip("12 h", 43200),
                            Chip("24 h", 86400)));
    EXPECT_THAT(menu().fanDurations(), ElementsAre(Chip("1 m", 60), Chip("5 m", 300), Chip("10 m", 600),
                                                   Chip("30 m", 1800), Chip("1 h", 3600)));
}

// The sections that are in use

TEST_F(MenuPanel, OpensJustTheFansWithoutAHelper) {
    menu().panelAppeared();
    EXPECT_FALSE(menu().expandAwake());
    EXPECT_FALSE(menu().expandLid());
    EXPECT_FALSE(menu().expandAuto());
    EXPECT_FALSE(menu().expandDrives());
    EXPECT_TRUE(menu().expandFans());
}

TEST_F(MenuPanelWithHelper, OpensNothingWhenNothingIsInUse) {
    menu().setExpandAwake(true);
    menu().setExpandLid(true);
    menu().setExpandAuto(true);
    menu().setExpandDrives(true);
    menu().setExpandFans(true);
    menu().panelAppeared();
    EXPECT_FALSE(menu().expandAwake());
    EXPECT_FALSE(menu().expandLid());
    EXPECT_FALSE(menu().expandAuto());
    EXPECT_FALSE(menu().expandDrives());
    EXPECT_FALSE(menu().expandFans());
}

TEST_F(MenuPanel, OpensTheSessionsSectionWhileThereIsOne) {
    manager().apply({Kind::network}, std::nullopt);
    menu().panelAppeared();
    EXPECT_TRUE(menu().expandAwake());
}

TEST_F(MenuPanel, OpensTheClosedLidSectionWhileTheModeIsOnAndAfterItStoppedItself) {
    manager().lid().setEnabled(true);
    menu().panelAppeared();
    EXPECT_TRUE(menu().expandLid());

    machine.thermal.set(ThermalState::serious);
    ASSERT_FALSE(manager().lid().enabled());
    menu().panelAppeared();
    EXPECT_TRUE(menu().expandLid()) << "it says why";

    machine.thermal.set(ThermalState::nominal);
    manager().lid().setEnabled(true);
    manager().lid().setEnabled(false);
    menu().panelAppeared();
    EXPECT_FALSE(menu().expandLid());
}

TEST_F(MenuPanel, OpensTheAutomationsSectionWhileItIsOn) {
    manager().triggers().setAutomationEnabled(true);
    ASSERT_FALSE(manager().triggers().active());
    menu().panelAppeared();
    EXPECT_TRUE(menu().expandAuto());
}

TEST_F(MenuPanel, OpensTheDrivesSectionWhileTheyAreKeptAwake) {
    manager().drives().setEnabled(true);
    menu().panelAppeared();
    EXPECT_TRUE(menu().expandDrives());
}

TEST_F(MenuPanelWithHelper, OpensTheFansSectionWhileTheyAreOnOrTheAutomationCools) {
    fan().setFansEnabled(true);
    menu().panelAppeared();
    EXPECT_TRUE(menu().expandFans());

    fan().setFansEnabled(false);
    fan().requestCooling(Profile::silent, "test");
    menu().panelAppeared();
    EXPECT_TRUE(menu().expandFans());
}

TEST_F(MenuPanel, LeavesTheSectionsToTheUserWhileItIsShown) {
    menu().panelAppeared();
    menu().setExpandFans(false);
    manager().drives().setEnabled(true);
    manager().apply({Kind::system}, std::nullopt);
    machine.advance(1min);
    EXPECT_FALSE(menu().expandFans());
    EXPECT_FALSE(menu().expandDrives());
    EXPECT_FALSE(menu().expandAwake());
}

TEST_F(MenuPanel, KeepsItsStateWhileItIsClosed) {
    menu().panelAppeared();
    menu().setShowingCustomPicker(true);
    menu().setExpandAuto(true);
    menu().panelDisappeared();
    machine.advance(1h);
    EXPECT_TRUE(menu().showingCustomPicker());
    EXPECT_TRUE(menu().expandAuto());
}

// The helper's status

TEST_F(MenuPanelWithHelper, AsksTheHelperAtOnceWhenItAppears) {
    machine.report([] {
        StatusRecord record;
        record.set(StatusKey::effectivePercent, 37.0);
        return record;
    });
    menu().panelAppeared();
    machine.settle();
    EXPECT_EQ(fan().effectivePercent(), 37);
}

TEST_F(MenuPanel, ConnectsToNothingWhenItAppears) {
    menu().panelAppeared();
    machine.settle();
    EXPECT_EQ(machine.host.connectionCount(), 0U);
}

// What is opened elsewhere

TEST_F(MenuPanel, ShowsTheOtherWindowsAndQuits) {
    menu().showSettings();
    EXPECT_EQ(machine.settingsShown, 1);
    menu().showGuide();
    EXPECT_EQ(machine.guidesShown, 1);
    menu().quit();
    EXPECT_EQ(machine.quits, 1);
}

}  // namespace
}  // namespace corvane
