#include <chrono>

#include <gmock/gmock.h>

#include "tests/app/application/MenuBarTest.h"
#include "tests/support/SignalCount.h"

namespace corvane {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

using Presence = ActivationPolicy::Presence;

/// The application's windows, from its start on.
class MenuBarWindowsTest : public MenuBarTest {
protected:
    void startForTheFirstTime() {
        wasIntroduced = false;
        start();
    }
    void finishIntroduction() {
        shown.introduction->finish();
        settle();
    }
    /// Opens the settings from the panel.
    SettingsState& openSettings() {
        menuBar->menu().showSettings();
        return *shown.settings;
    }
    void answerPrompt(const InstallResult& result) {
        platform.uninstaller->finish(result);
        settle();
    }

    [[nodiscard]] Presence presence() const { return platform.activationPolicy->presence(); }
    [[nodiscard]] bool hasEnded() const { return platform.loop.wasLeft(); }
};

TEST_F(MenuBarWindowsTest, ShowTheIntroductionAtTheVeryFirstStartAndNotThePanel) {
    startForTheFirstTime();
    ASSERT_NE(shown.introductionWindow, nullptr);
    EXPECT_EQ(shown.introductionWindow->timesToFront, 1);
    EXPECT_EQ(presence(), Presence::regular);
    platform.helper.advance(10s);
    EXPECT_THAT(shown.popover->openings, IsEmpty());
    EXPECT_EQ(platform.defaults->get<std::string>("lastLaunchedBuild"), BuildInfo::buildNumber);
}

TEST_F(MenuBarWindowsTest, OpenThePanelOnceWhenTheIntroductionHasBeenSeenToItsEnd) {
    startForTheFirstTime();
    finishIntroduction();
    EXPECT_EQ(shown.introductionWindow, nullptr);
    EXPECT_EQ(presence(), Presence::accessory);
    platform.helper.advance(340ms);
    EXPECT_THAT(shown.popover->openings, IsEmpty());
    platform.helper.advance(20ms);
    EXPECT_THAT(shown.popover->openings, SizeIs(1));
    platform.helper.advance(10s);
    EXPECT_THAT(shown.popover->openings, SizeIs(1));
    EXPECT_EQ(platform.defaults->get<std::string>("onboardingSeenVersion"), BuildInfo::version);
}

TEST_F(MenuBarWindowsTest, LeaveThePanelClosedWhenTheIntroductionWasOnlyClosed) {
    startForTheFirstTime();
    shown.introductionWindow->close();
    platform.helper.advance(10s);
    EXPECT_THAT(shown.popover->openings, IsEmpty());
    EXPECT_EQ(platform.defaults->value("onboardingSeenVersion"), std::nullopt);
}

TEST_F(MenuBarWindowsTest, OpenThePanelByItselfAfterANewBuildOfAVersionWhoseIntroductionWasSeen) {
    platform.storedAtFirst["lastLaunchedBuild"] = std::string("another");
    start();
    EXPECT_EQ(shown.introductionWindow, nullptr);
    platform.helper.advance(701ms);
    EXPECT_THAT(shown.popover->openings, SizeIs(1));
}

TEST_F(MenuBarWindowsTest, ShowTheIntroductionAgainFromThePanel) {
    startAgain();
    menuBar->menu().showGuide();
    ASSERT_NE(shown.introductionWindow, nullptr);
    menuBar->menu().showGuide();
    EXPECT_EQ(shown.introductionWindow->timesToFront, 2) << "there is one";
}

TEST_F(MenuBarWindowsTest, ShowTheIntroductionAgainFromTheSettings) {
    startAgain();
    openSettings().showIntroduction();
    ASSERT_NE(shown.introductionWindow, nullptr);
    finishIntroduction();
    EXPECT_NE(shown.settingsWindow, nullptr);
    EXPECT_EQ(presence(), Presence::regular) << "the settings are still open";
    platform.helper.advance(1s);
    EXPECT_THAT(shown.popover->openings, SizeIs(1));
}

TEST_F(MenuBarWindowsTest, ShowOneSettingsWindow) {
    startAgain();
    openSettings();
    const auto* const first = shown.settingsWindow;
    openSettings();
    EXPECT_EQ(shown.settingsWindow, first);
    EXPECT_EQ(first->timesToFront, 2);
}

TEST_F(MenuBarWindowsTest, KeepTheApplicationAmongTheOthersUntilTheLastOneIsClosed) {
    startAgain();
    openSettings();
    menuBar->menu().showGuide();
    shown.settingsWindow->close();
    EXPECT_EQ(presence(), Presence::regular);
    shown.introductionWindow->close();
    EXPECT_EQ(presence(), Presence::accessory);
}

TEST_F(MenuBarWindowsTest, SwitchTheHotKeysFromTheSettings) {
    startAgain();
    ASSERT_THAT(platform.keyboard->registered(), SizeIs(2));
    openSettings().setHotkeysOn(false);
    EXPECT_THAT(platform.keyboard->registered(), IsEmpty());
    openSettings().setHotkeysOn(true);
    EXPECT_THAT(platform.keyboard->registered(), SizeIs(2));
}

TEST_F(MenuBarWindowsTest, ShowTheTemperatureBesideTheGaugeWithinASecondOfItsSwitch) {
    startAgain();
    openSettings().setShowTemp(true);
    platform.helper.advance(1s);
    EXPECT_EQ(item().title(), " 50°");
    openSettings().setShowTemp(false);
    platform.helper.advance(1s);
    EXPECT_EQ(item().title(), "");
}

TEST_F(MenuBarWindowsTest, EndTheApplicationForARestartInAnotherLanguage) {
    startAgain();
    SettingsState& settings = openSettings();
    settings.chooseLanguage("de");
    EXPECT_FALSE(hasEnded());
    settings.restartNow();
    EXPECT_EQ(platform.relauncher->relaunches(), 1);
    EXPECT_TRUE(hasEnded());
}

TEST_F(MenuBarWindowsTest, HaveWhateverElseIsOpenFollowTheLanguageOfTheSettings) {
    startAgain();
    SettingsState& settings = openSettings();
    menuBar->menu().showGuide();
    const SignalCount changes(*shown.introduction, &OnboardingState::pagesChanged);
    settings.chooseLanguage("de");
    EXPECT_EQ(changes.value(), 1);
    EXPECT_EQ(shown.introduction->pages().front().title, "Willkommen bei\nCorvane");
    EXPECT_EQ(shown.popover->timesRetranslated, 1);
}

TEST_F(MenuBarWindowsTest, RemoveTheApplicationAndEndItOnceTheUserHasReadTheFarewell) {
    startAgain();
    SettingsState& settings = openSettings();
    settings.askToUninstall();
    settings.confirmUninstall();
    EXPECT_EQ(platform.uninstaller->clearings(), 0) << "nobody has agreed yet";
    answerPrompt(InstallResult::success());
    EXPECT_EQ(platform.uninstaller->clearings(), 1);
    EXPECT_FALSE(hasEnded());
    settings.sayGoodbye();
    EXPECT_TRUE(hasEnded());
}

/// From the panel, such as by its switch for the start at login, traces would come back.
TEST_F(MenuBarWindowsTest, LeaveNothingButTheFarewellToUseOnceTheApplicationIsRemoved) {
    startAgain();
    SettingsState& settings = openSettings();
    settings.showIntroduction();
    settings.askToUninstall();
    settings.confirmUninstall();
    item().click();
    ASSERT_TRUE(shown.popover->isShown()) << "while the password is asked for";
    ASSERT_NE(shown.introductionWindow, nullptr);
    answerPrompt(InstallResult::success());
    EXPECT_FALSE(shown.popover->isShown());
    EXPECT_EQ(shown.introductionWindow, nullptr);
    EXPECT_NE(shown.settingsWindow, nullptr);
    item().click();
    menuBar->openPanel();
    EXPECT_FALSE(shown.popover->isShown());
    EXPECT_THAT(item().menu(), IsEmpty());
    platform.keyboard->press('k');
    settle();
    EXPECT_TRUE(manager().activeKinds().empty());
}

TEST_F(MenuBarWindowsTest, LeaveEverythingAsItIsWhenThePasswordIsNotGiven) {
    startAgain();
    SettingsState& settings = openSettings();
    settings.askToUninstall();
    settings.confirmUninstall();
    answerPrompt(InstallResult::cancelled());
    EXPECT_EQ(platform.uninstaller->clearings(), 0);
    EXPECT_FALSE(hasEnded());
    EXPECT_NE(shown.settingsWindow, nullptr);
}

}  // namespace
}  // namespace corvane
