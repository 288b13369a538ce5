#include "tests/app/ui/SettingsViewTest.h"

namespace corvane {
namespace {

/// The alert that is shown, as a screen reader has it.
struct HeardAlert {
    int count = 0;
    std::string title;
    std::string text;
};

class SettingsAlerts : public SettingsViewTest {
protected:
    HeardAlert alert() {
        HeardAlert alert;
        forEachShown(*view().contentItem(), [&](QQuickItem& each) {
            QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&each);
            if (heard != nullptr && heard->role() == QAccessible::AlertMessage) {
                ++alert.count;
                alert.title = heard->text(QAccessible::Name).toStdString();
                alert.text = heard->text(QAccessible::Description).toStdString();
            }
        });
        return alert;
    }
    void expectAlert(const std::string& title, const std::string& message) {
        const HeardAlert shown = alert();
        EXPECT_EQ(shown.count, 1);
        EXPECT_EQ(shown.title, title);
        EXPECT_EQ(shown.text, message);
        EXPECT_EQ(text("alertText"), message);
        EXPECT_EQ(focused(), "alertAccept");
        const QRectF box = item("alertArea").mapRectToScene(item("alertArea").boundingRect());
        EXPECT_GE(box.top(), 0);
        EXPECT_LT(item("alertAccept").mapToScene({0, item("alertAccept").height()}).y(), view().height());
    }
    /// The symbol before the title; "" for none.
    std::string alertSymbol(const char* name) {
        const auto* dialog = view().contentItem()->window()->findChild<QObject*>(name);
        return dialog == nullptr ? "no such alert" : dialog->property("symbol").toString().toStdString();
    }
    bool isAlertShown() { return alert().count > 0; }
};

TEST_F(SettingsAlerts, OfferARestartInTheNewLanguage) {
    open();
    click("language/de");
    EXPECT_EQ(machine.defaults.get<std::string>("appLanguage"), "de");
    expectAlert("Sprache geändert", "Starte Corvane neu, damit die Sprache überall übernommen wird.");
    EXPECT_EQ(text("alertAccept"), "Jetzt neu starten");
    EXPECT_EQ(text("alertReject"), "Später");
    click("alertReject");
    EXPECT_FALSE(isAlertShown());
    EXPECT_EQ(machine.relauncher.relaunches(), 0);
    EXPECT_EQ(text("uninstall"), "Corvane entfernen…") << "the window follows at once";
    EXPECT_EQ(view().title(), "Corvane Einstellungen");

    click("language/en");
    expectAlert("Language changed", "Restart Corvane so the language applies everywhere.");
    EXPECT_EQ(text("alertAccept"), "Restart now");
    EXPECT_EQ(text("alertReject"), "Later");
    click("alertAccept");
    EXPECT_EQ(machine.relauncher.relaunches(), 1);
    EXPECT_EQ(machine.quits, 1);
}

TEST_F(SettingsAlerts, FollowTheSystemsLanguageWhenItIsChosen) {
    machine.locale.prefer({"de-CH", "en"});
    open();
    click("language/system");
    expectAlert("Sprache geändert", "Starte Corvane neu, damit die Sprache überall übernommen wird.");
}

TEST_F(SettingsAlerts, TakeReturnForTheFirstAnswerAndEscapeForTheOther) {
    open();
    click("language/de");
    press(Qt::Key_Escape);
    EXPECT_FALSE(isAlertShown());
    EXPECT_EQ(machine.relauncher.relaunches(), 0);
    click("language/en");
    press(Qt::Key_Return);
    EXPECT_EQ(machine.relauncher.relaunches(), 1);
}

TEST_F(SettingsAlerts, KeepTheControlsBehindThemFromClicks) {
    open();
    askToUninstall();
    const QPointF place = item("launchAtLogin/switch").mapToScene({10, 10});
    QTest::mouseClick(&view(), Qt::LeftButton, Qt::NoModifier, place.toPoint());
    settle();
    EXPECT_FALSE(machine.loginItem.isEnabled());
    EXPECT_TRUE(isAlertShown());
}

TEST_F(SettingsAlerts, AskBeforeTheRemovalInEnglish) {
    open();
    askToUninstall();
    expectAlert("Really uninstall Corvane?",
                "This removes: the fan background helper, the app itself and all settings. Fan control "
                "immediately returns to macOS. You'll be asked for your password once.");
    EXPECT_EQ(text("alertAccept"), "Uninstall");
    EXPECT_EQ(text("alertReject"), "Cancel");
    click("alertReject");
    EXPECT_FALSE(isAlertShown());
    EXPECT_EQ(machine.uninstaller.prompts(), 0);
}

TEST_F(SettingsAlerts, AskBeforeTheRemovalInGerman) {
    speak("de");
    open();
    askToUninstall();
    expectAlert("Corvane wirklich entfernen?",
                "Entfernt wird: der Lüfter-Hintergrunddienst, die App selbst und alle Einstellungen. Die "
                "Lüftersteuerung geht sofort wieder an macOS zurück. Du wirst einmal nach deinem Passwort "
                "gefragt.");
    EXPECT_EQ(text("alertAccept"), "Entfernen");
    EXPECT_EQ(text("alertReject"), "Abbrechen");
    press(Qt::Key_Escape);
    EXPECT_FALSE(isAlertShown());
    EXPECT_EQ(machine.uninstaller.prompts(), 0);
}

TEST_F(SettingsAlerts, GiveWayToThePasswordPrompt) {
    open();
    EXPECT_FALSE(isShown("busy"));
    beginRemoval();
    EXPECT_FALSE(isAlertShown());
    EXPECT_EQ(machine.uninstaller.prompts(), 1);
    EXPECT_TRUE(isShown("busy"));
    EXPECT_EQ(heard("busy"), "Uninstall Corvane…");
    for (const char* control : {"launchAtLogin/switch", "language/de", "checkForUpdates", "showIntroduction",
                                "sendFeedback", "uninstall"}) {
        EXPECT_FALSE(item(control).isEnabled()) << control;
    }
    click("uninstall");
    EXPECT_FALSE(isAlertShown());
}

TEST_F(SettingsAlerts, LeaveTheWindowAsItWasWhenThePromptIsDismissed) {
    open();
    beginRemoval();
    endRemoval(InstallResult::cancelled());
    EXPECT_FALSE(isAlertShown());
    EXPECT_FALSE(isShown("busy"));
    EXPECT_TRUE(item("uninstall").isEnabled());
    EXPECT_EQ(machine.uninstaller.clearings(), 0);
}

TEST_F(SettingsAlerts, SayGoodbyeInEnglish) {
    open();
    beginRemoval();
    endRemoval(InstallResult::success());
    EXPECT_EQ(machine.uninstaller.clearings(), 1);
    expectAlert("Corvane has been removed", "Thanks for trying it! The app will now quit.");
    EXPECT_EQ(text("alertAccept"), "Quit");
    EXPECT_FALSE(isShown("alertReject"));
    EXPECT_EQ(machine.quits, 0);
    click("alertAccept");
    EXPECT_EQ(machine.quits, 1);
}

TEST_F(SettingsAlerts, SayGoodbyeInGerman) {
    speak("de");
    open();
    beginRemoval();
    endRemoval(InstallResult::success());
    expectAlert("Corvane wurde entfernt", "Danke, dass du es ausprobiert hast! Die App wird jetzt beendet.");
    EXPECT_EQ(text("alertAccept"), "Beenden");
    press(Qt::Key_Escape);
    EXPECT_EQ(machine.quits, 1);
}

TEST_F(SettingsAlerts, SayWhyTheRemovalFailed) {
    open();
    beginRemoval();
    endRemoval(InstallResult::failure("polkitd <b>does not</b> answer"));
    expectAlert("Uninstall failed", "polkitd <b>does not</b> answer");
    EXPECT_EQ(alertSymbol("uninstallFailedAlert"), "exclamationmark.triangle.fill");
    EXPECT_EQ(alertSymbol("uninstallAlert"), "") << "a question, nothing bad yet";
    EXPECT_EQ(text("alertAccept"), "OK");
    EXPECT_FALSE(isShown("alertReject"));
    press(Qt::Key_Return);
    EXPECT_FALSE(isAlertShown());
    EXPECT_TRUE(item("uninstall").isEnabled());
    EXPECT_EQ(machine.quits, 0);

    state->chooseLanguage("de");
    state->restartLater();
    settle();
    beginRemoval();
    endRemoval(InstallResult::failure("nein"));
    expectAlert("Entfernen fehlgeschlagen", "nein");
    click("alertAccept");
    EXPECT_FALSE(isAlertShown());
}

TEST_F(SettingsAlerts, ScrollAReasonThatIsTooLong) {
    open();
    beginRemoval();
    std::string reason;
    for (int i = 0; i < 200; ++i) {
        reason += "It cannot be removed. ";
    }
    endRemoval(InstallResult::failure(reason));
    expectAlert("Uninstall failed", reason);
    const QQuickItem& area = item("alertArea");
    EXPECT_LT(area.height(), item("alertText").height());
    EXPECT_EQ(area.property("contentY").toReal(), 0);
    press(Qt::Key_Down);
    EXPECT_GT(area.property("contentY").toReal(), 0);
    press(Qt::Key_Up);
    EXPECT_EQ(area.property("contentY").toReal(), 0);
}

}  // namespace
}  // namespace corvane
