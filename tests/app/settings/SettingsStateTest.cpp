#include <QVariant>
#include <chrono>

#include "tests/app/settings/SettingsMachine.h"
#include "tests/support/SignalCount.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using Alert = SettingsState::Alert;
using testing::ElementsAre;
using testing::IsEmpty;

class SettingsStateTest : public testing::Test {
protected:
    SettingsStateTest() { open(); }

    void open() { state.emplace(machine.services()); }
    std::optional<bool> stored(const char* setting) { return machine.defaults.get<bool>(setting); }
    std::optional<std::string> storedLanguage() { return machine.defaults.get<std::string>("appLanguage"); }

    SettingsMachine machine;
    std::optional<SettingsState> state;
};

TEST_F(SettingsStateTest, BeginsWithTheDefaults) {
    EXPECT_FALSE(state->launchAtLogin());
    EXPECT_FALSE(state->showTemp());
    EXPECT_TRUE(state->hotkeysOn());
    EXPECT_TRUE(state->heatAlerts());
    EXPECT_TRUE(state->lowBattStop());
    EXPECT_EQ(state->appLang(), "system");
    EXPECT_FALSE(state->checking());
    EXPECT_FALSE(state->checkedOnce());
    EXPECT_EQ(state->alert(), Alert::none);
    EXPECT_FALSE(state->isRemoving());
    EXPECT_EQ(state->version(), "1.9");
}

TEST_F(SettingsStateTest, StoresNothingByItself) {
    for (const char* setting :
         {"showTempInMenuBar", "hotkeysEnabled", "appLanguage", "heatAlerts", "lowBatteryAutoStop"}) {
        EXPECT_FALSE(machine.defaults.value(setting)) << setting;
    }
    EXPECT_THAT(machine.hotkeys, IsEmpty());
    EXPECT_THAT(machine.client.requests(), IsEmpty());
}

TEST_F(SettingsStateTest, BeginsWithWhatIsStoredAndWhatTheSystemSays) {
    machine.loginItem.setEnabled(true);
    machine.defaults.set("showTempInMenuBar", true);
    machine.defaults.set("hotkeysEnabled", false);
    machine.defaults.set("heatAlerts", false);
    machine.defaults.set("lowBatteryAutoStop", false);
    machine.defaults.set("appLanguage", std::string("de"));
    open();
    EXPECT_TRUE(state->launchAtLogin());
    EXPECT_TRUE(state->showTemp());
    EXPECT_FALSE(state->hotkeysOn());
    EXPECT_FALSE(state->heatAlerts());
    EXPECT_FALSE(state->lowBattStop());
    EXPECT_EQ(state->appLang(), "de");
}

TEST_F(SettingsStateTest, TakesAnyOtherStoredLanguageForTheSystems) {
    for (const char* other : {"DE", "fr", ""}) {
        machine.defaults.set("appLanguage", std::string(other));
        open();
        EXPECT_EQ(state->appLang(), "system") << other;
    }
    machine.defaults.set("appLanguage", true);
    open();
    EXPECT_EQ(state->appLang(), "system");
}

TEST_F(SettingsStateTest, StoresEachSwitch) {
    struct Switch {
        const char* setting;
        void (SettingsState::*set)(bool);
        bool (SettingsState::*get)() const;
        void (SettingsState::*changed)();
    };
    for (const Switch& each : {Switch{"showTempInMenuBar", &SettingsState::setShowTemp,
                                      &SettingsState::showTemp, &SettingsState::showTempChanged},
                               Switch{"hotkeysEnabled", &SettingsState::setHotkeysOn,
                                      &SettingsState::hotkeysOn, &SettingsState::hotkeysOnChanged},
                               Switch{"heatAlerts", &SettingsState::setHeatAlerts, &SettingsState::heatAlerts,
                                      &SettingsState::heatAlertsChanged},
                               Switch{"lowBatteryAutoStop", &SettingsState::setLowBattStop,
                                      &SettingsState::lowBattStop, &SettingsState::lowBattStopChanged}}) {
        const SignalCount changes(*state, each.changed);
        const bool first = !((*state).*each.get)();
        for (const bool on : {first, !first}) {
            ((*state).*each.set)(on);
            EXPECT_EQ(stored(each.setting), on) << each.setting;
            EXPECT_EQ(((*state).*each.get)(), on) << each.setting;
        }
        EXPECT_EQ(changes.value(), 2) << each.setting;
    }
}

TEST_F(SettingsStateTest, SwitchesTheHotKeys) {
    state->setHotkeysOn(false);
    state->setHotkeysOn(true);
    EXPECT_THAT(machine.hotkeys, ElementsAre(false, true));
}

TEST_F(SettingsStateTest, SwitchesTheLoginItem) {
    state->setLaunchAtLogin(true);
    EXPECT_TRUE(machine.loginItem.isEnabled());
    EXPECT_TRUE(state->launchAtLogin());
    state->setLaunchAtLogin(false);
    EXPECT_FALSE(machine.loginItem.isEnabled());
    EXPECT_FALSE(state->launchAtLogin());
}

TEST_F(SettingsStateTest, ShowsWhatHasBecomeOfTheLoginItem) {
    machine.loginItem.breakDown();
    state->setLaunchAtLogin(true);
    EXPECT_FALSE(state->launchAtLogin());
}

TEST_F(SettingsStateTest, DoesNotRegisterALoginItemThatIsOnAlready) {
    machine.loginItem.setEnabled(true);
    state->setLaunchAtLogin(true);
    EXPECT_EQ(machine.loginItem.changes(), 1);
    EXPECT_TRUE(state->launchAtLogin());
}

TEST_F(SettingsStateTest, StoresTheLanguageAndOffersARestart) {
    const SignalCount changes(*state, &SettingsState::languageChanged);
    state->chooseLanguage("de");
    EXPECT_EQ(storedLanguage(), "de");
    EXPECT_EQ(state->appLang(), "de");
    EXPECT_EQ(changes.value(), 1);
    EXPECT_EQ(machine.retranslations, 1);
    EXPECT_EQ(state->alert(), Alert::languageRestart);
    EXPECT_EQ(state->property("alert"), "languageRestart");
    EXPECT_EQ(machine.relauncher.relaunches(), 0);
}

TEST_F(SettingsStateTest, AsksForTextsOfTheNewLanguageBeforeTheAlertIsSeen) {
    Alert alertThen = Alert::removed;
    bool isGermanThen = false;
    QObject::connect(&*state, &SettingsState::languageChanged, [&] {
        alertThen = state->alert();
        isGermanThen = machine.lang.isGerman();
    });
    state->chooseLanguage("de");
    EXPECT_TRUE(isGermanThen);
    EXPECT_EQ(alertThen, Alert::none);
}

TEST_F(SettingsStateTest, KeepsTheLanguageWhenTheRestartIsPutOff) {
    state->chooseLanguage("de");
    state->restartLater();
    EXPECT_EQ(state->alert(), Alert::none);
    EXPECT_EQ(storedLanguage(), "de");
    EXPECT_TRUE(machine.lang.isGerman());
    EXPECT_EQ(machine.relauncher.relaunches(), 0);
    EXPECT_EQ(machine.quits, 0);
}

TEST_F(SettingsStateTest, StartsAnewAndQuitsForTheLanguage) {
    state->chooseLanguage("de");
    state->restartNow();
    EXPECT_EQ(machine.relauncher.relaunches(), 1);
    EXPECT_EQ(machine.quits, 1);
    state->restartNow();
    EXPECT_EQ(machine.relauncher.relaunches(), 1) << "once is enough";
    EXPECT_EQ(machine.quits, 1);
}

TEST_F(SettingsStateTest, KnowsThreeChoicesOfLanguage) {
    for (const char* language : {"fr", "DE", ""}) {
        state->chooseLanguage(language);
        EXPECT_EQ(storedLanguage(), std::nullopt) << language;
        EXPECT_EQ(state->alert(), Alert::none) << language;
    }
    state->chooseLanguage("en");
    state->restartLater();
    state->chooseLanguage("system");
    EXPECT_EQ(storedLanguage(), "system");
    EXPECT_EQ(state->alert(), Alert::languageRestart);
}

TEST_F(SettingsStateTest, PassesOverTheLanguageThatIsChosen) {
    state->chooseLanguage("system");
    EXPECT_EQ(storedLanguage(), std::nullopt);
    EXPECT_EQ(state->alert(), Alert::none);
}

TEST_F(SettingsStateTest, ShowsForAWhileThatItChecksForUpdates) {
    state->checkForUpdates();
    EXPECT_TRUE(state->checking());
    EXPECT_TRUE(state->checkedOnce());
    EXPECT_EQ(machine.client.requests().size(), 1U);
    machine.time.advance(1499ms);
    EXPECT_TRUE(state->checking());
    machine.time.advance(1ms);
    EXPECT_FALSE(state->checking());
    EXPECT_TRUE(state->checkedOnce());
}

TEST_F(SettingsStateTest, ShowsTheLatestOfTwoChecksForAsLong) {
    state->checkForUpdates();
    machine.time.advance(1s);
    state->checkForUpdates();
    EXPECT_EQ(machine.client.requests().size(), 2U);
    machine.time.advance(1499ms);
    EXPECT_TRUE(state->checking());
    machine.time.advance(1ms);
    EXPECT_FALSE(state->checking());
}

TEST_F(SettingsStateTest, MayGoWhileItChecks) {
    state->checkForUpdates();
    state.reset();
    machine.time.advance(2s);
    EXPECT_EQ(machine.client.requests().size(), 1U);
}

TEST_F(SettingsStateTest, ShowsTheIntroduction) {
    state->showIntroduction();
    EXPECT_EQ(machine.introductions, 1);
}

TEST_F(SettingsStateTest, BeginsAMessageWithTheVersionInItsSubject) {
    EXPECT_TRUE(state->canSendFeedback());
    state->sendFeedback();
    EXPECT_THAT(machine.opener.opened(),
                ElementsAre("mailto:help@corvane.example?subject=Corvane%20v1.9%20%E2%80%94%20Feedback"));
}

TEST_F(SettingsStateTest, BeginsNoMessageToNobody) {
    machine.supportMail = "";
    open();
    EXPECT_FALSE(state->canSendFeedback());
    state->sendFeedback();
    EXPECT_THAT(machine.opener.opened(), IsEmpty());
}

class SettingsRemoval : public SettingsStateTest {
protected:
    void confirm() {
        state->askToUninstall();
        state->confirmUninstall();
    }
};

TEST_F(SettingsRemoval, AsksFirst) {
    state->askToUninstall();
    EXPECT_EQ(state->alert(), Alert::confirmUninstall);
    EXPECT_EQ(machine.uninstaller.prompts(), 0);
    state->cancelUninstall();
    EXPECT_EQ(state->alert(), Alert::none);
    EXPECT_EQ(machine.uninstaller.prompts(), 0);
    EXPECT_EQ(machine.uninstaller.clearings(), 0);
}

TEST_F(SettingsRemoval, AsksForThePasswordOnce) {
    confirm();
    state->confirmUninstall();
    EXPECT_EQ(machine.uninstaller.prompts(), 1);
    EXPECT_TRUE(state->isRemoving());
    EXPECT_EQ(state->alert(), Alert::none);
    EXPECT_EQ(machine.uninstaller.clearings(), 0);
}

TEST_F(SettingsRemoval, ClearsTheTracesSaysGoodbyeAndQuits) {
    confirm();
    machine.uninstaller.finish(InstallResult::success());
    EXPECT_FALSE(state->isRemoving());
    EXPECT_EQ(machine.withdrawals, 1);
    EXPECT_EQ(machine.uninstaller.clearings(), 1);
    EXPECT_EQ(state->alert(), Alert::removed);
    EXPECT_EQ(machine.quits, 0);
    state->sayGoodbye();
    EXPECT_EQ(machine.quits, 1);
}

TEST_F(SettingsRemoval, LeavesNothingBehindThatIsSwitchedAfterwards) {
    confirm();
    machine.uninstaller.finish(InstallResult::success());
    state->setLaunchAtLogin(true);
    state->setShowTemp(true);
    state->setHotkeysOn(false);
    state->setHeatAlerts(false);
    state->setLowBattStop(false);
    EXPECT_FALSE(machine.loginItem.isEnabled());
    EXPECT_FALSE(state->launchAtLogin());
    for (const char* setting : {"showTempInMenuBar", "hotkeysEnabled", "heatAlerts", "lowBatteryAutoStop"}) {
        EXPECT_EQ(machine.defaults.value(setting), std::nullopt) << setting;
    }
    EXPECT_THAT(machine.hotkeys, IsEmpty());
}

TEST_F(SettingsRemoval, QuitsWhenTheWindowIsClosedInsteadOfSayingGoodbye) {
    confirm();
    machine.uninstaller.finish(InstallResult::success());
    state->windowClosed();
    EXPECT_EQ(machine.quits, 1);
}

TEST_F(SettingsRemoval, TellsWhyItFailedAndGoesOn) {
    confirm();
    machine.uninstaller.finish(InstallResult::failure("The helper does not answer"));
    EXPECT_FALSE(state->isRemoving());
    EXPECT_EQ(state->alert(), Alert::uninstallFailed);
    EXPECT_EQ(state->uninstallError(), "The helper does not answer");
    EXPECT_EQ(machine.uninstaller.clearings(), 0);
    EXPECT_EQ(machine.withdrawals, 0);
    state->dismissFailure();
    EXPECT_EQ(state->alert(), Alert::none);
    state->windowClosed();
    EXPECT_EQ(machine.quits, 0);
    confirm();
    EXPECT_EQ(machine.uninstaller.prompts(), 2) << "it can be tried again";
}

TEST_F(SettingsRemoval, IsAsBeforeWhenThePromptIsDismissed) {
    confirm();
    machine.uninstaller.finish(InstallResult::cancelled());
    EXPECT_FALSE(state->isRemoving());
    EXPECT_EQ(state->alert(), Alert::none);
    EXPECT_EQ(machine.uninstaller.clearings(), 0);
    EXPECT_EQ(machine.quits, 0);
    confirm();
    EXPECT_EQ(machine.uninstaller.prompts(), 2);
}

TEST_F(SettingsRemoval, TellsItsEndOnceHoweverItEnds) {
    for (const InstallResult& result :
         {InstallResult::cancelled(), InstallResult::failure("no"), InstallResult::success()}) {
        open();
        SignalCount ends(*state, &SettingsState::removalEnded);
        confirm();
        EXPECT_EQ(ends.value(), 0);
        machine.uninstaller.finish(result);
        EXPECT_EQ(ends.value(), 1);
    }
}

TEST_F(SettingsRemoval, LetsNothingElseBeStartedMeanwhile) {
    confirm();
    state->askToUninstall();
    state->chooseLanguage("de");
    state->checkForUpdates();
    state->showIntroduction();
    state->sendFeedback();
    EXPECT_EQ(state->alert(), Alert::none);
    EXPECT_EQ(storedLanguage(), std::nullopt);
    EXPECT_THAT(machine.client.requests(), IsEmpty());
    EXPECT_EQ(machine.introductions, 0);
    EXPECT_THAT(machine.opener.opened(), IsEmpty());
    EXPECT_EQ(machine.uninstaller.prompts(), 1);
}

TEST_F(SettingsRemoval, LetsNothingElseBeStartedWhileAnAlertWaits) {
    state->chooseLanguage("de");
    state->askToUninstall();
    EXPECT_EQ(state->alert(), Alert::languageRestart);
    state->chooseLanguage("en");
    EXPECT_EQ(storedLanguage(), "de");
}

TEST_F(SettingsRemoval, HearsOnlyTheAnswerToItsOwnAlert) {
    state->confirmUninstall();
    state->restartNow();
    state->sayGoodbye();
    EXPECT_EQ(machine.uninstaller.prompts(), 0);
    EXPECT_EQ(machine.relauncher.relaunches(), 0);
    EXPECT_EQ(machine.quits, 0);
    state->askToUninstall();
    state->restartLater();
    state->dismissFailure();
    EXPECT_EQ(state->alert(), Alert::confirmUninstall);
}

}  // namespace
}  // namespace corvane
