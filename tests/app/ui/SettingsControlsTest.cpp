#include <chrono>
#include <vector>

#include "tests/app/ui/SettingsViewTest.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr const char* newerFeed = R"({"shortVersion":"2.0","url":"https://corvane.example/get"})";

class SettingsControls : public SettingsViewTest {
protected:
    /// The feed answers so to the next check.
    void checkWith(std::optional<std::string> feed) {
        machine.client.setBody(std::move(feed));
        click("checkForUpdates");
    }
    bool isOn(const char* setting) {
        return item(QString("%1/switch").arg(setting)).property("isOn").toBool();
    }
    std::optional<bool> stored(const char* setting) { return machine.defaults.get<bool>(setting); }
};

TEST_F(SettingsControls, NameCorvaneAndItsVersion) {
    open();
    EXPECT_EQ(text("name"), "Corvane");
    EXPECT_EQ(text("version"), "v1.9");
    EXPECT_EQ(item("gauge").property("name").toString(), "gauge.with.dots.needle.bottom.50percent");
    EXPECT_EQ(accessible("name").role(), QAccessible::Heading);
    EXPECT_EQ(heard("version"), "v1.9");
}

TEST_F(SettingsControls, SpeakEnglish) {
    open();
    EXPECT_EQ(view().title(), "Corvane Settings");
    EXPECT_EQ(item("general").property("title").toString(), "General");
    EXPECT_EQ(text("launchAtLogin"), "Launch automatically at login");
    EXPECT_EQ(text("showTemp"), "Show temperature in the menu bar");
    EXPECT_EQ(text("hotkeysOn"), "Global keyboard shortcuts");
    EXPECT_EQ(text("hotkeysOn/hint"), "⌥⌘K · Keep awake    ⌥⌘L · Fan boost");
    EXPECT_EQ(text("heatAlerts"), "Alerts on heat & throttling");
    EXPECT_EQ(text("lowBattStop"), "Auto-stop on low battery");
    EXPECT_EQ(text("lowBattStop/hint"), "Ends keep-awake below 15% off charger.");
    EXPECT_EQ(text("languageText"), "Language");
    EXPECT_EQ(item("updates").property("title").toString(), "Updates");
    EXPECT_EQ(text("checkForUpdates"), "Check for updates");
    EXPECT_EQ(text("newestVersion"), "You're on the latest version.");
    EXPECT_EQ(text("showIntroduction"), "Show intro again");
    EXPECT_EQ(text("sendFeedback"), "Send feedback / report a bug");
    EXPECT_EQ(text("uninstall"), "Uninstall Corvane…");
    EXPECT_EQ(text("uninstallHint"), "Completely removes the background helper, the app and its settings.");
    checkWith(newerFeed);
    EXPECT_EQ(text("downloadUpdate"), "Download update v2.0");
}

TEST_F(SettingsControls, SpeakGerman) {
    speak("de");
    open();
    EXPECT_EQ(view().title(), "Corvane Einstellungen");
    EXPECT_EQ(item("general").property("title").toString(), "Allgemein");
    EXPECT_EQ(text("launchAtLogin"), "Beim Anmelden automatisch starten");
    EXPECT_EQ(text("showTemp"), "Temperatur in der Menüleiste anzeigen");
    EXPECT_EQ(text("hotkeysOn"), "Globale Tastenkürzel");
    EXPECT_EQ(text("hotkeysOn/hint"), "⌥⌘K · Wach bleiben    ⌥⌘L · Lüfter-Boost");
    EXPECT_EQ(text("heatAlerts"), "Warnungen bei Hitze & Drosselung");
    EXPECT_EQ(text("lowBattStop"), "Bei niedrigem Akku automatisch stoppen");
    EXPECT_EQ(text("lowBattStop/hint"), "Beendet Wachhalten unter 15 % ohne Netzteil.");
    EXPECT_EQ(text("languageText"), "Sprache");
    EXPECT_EQ(item("updates").property("title").toString(), "Updates");
    EXPECT_EQ(text("checkForUpdates"), "Nach Updates suchen");
    EXPECT_EQ(text("newestVersion"), "Du hast die neueste Version.");
    EXPECT_EQ(text("showIntroduction"), "Einführung erneut zeigen");
    EXPECT_EQ(text("sendFeedback"), "Feedback / Bug melden");
    EXPECT_EQ(text("uninstall"), "Corvane entfernen…");
    EXPECT_EQ(text("uninstallHint"), "Entfernt Hintergrunddienst, App und Einstellungen vollständig.");
    checkWith(newerFeed);
    EXPECT_EQ(text("downloadUpdate"), "Update auf v2.0 laden");
}

TEST_F(SettingsControls, NameTheLanguagesInTheirOwn) {
    for (const char* language : {"de", "en"}) {
        speak(language);
        open();
        EXPECT_EQ(text("language/system"), "System");
        EXPECT_EQ(text("language/de"), "Deutsch");
        EXPECT_EQ(text("language/en"), "English");
    }
}

TEST_F(SettingsControls, HaveTheirSymbols) {
    open();
    checkWith(newerFeed);
    for (const auto& [path, symbol] :
         {std::pair{"downloadUpdate", "arrow.down.circle.fill"},
          std::pair{"showIntroduction", "questionmark.circle"}, std::pair{"sendFeedback", "envelope"},
          std::pair{"uninstall", "trash"}}) {
        EXPECT_EQ(item(path).property("symbol").toString(), symbol) << path;
    }
}

TEST_F(SettingsControls, SwitchWhatTheySay) {
    open();
    EXPECT_FALSE(isOn("launchAtLogin"));
    click("launchAtLogin/switch");
    EXPECT_TRUE(machine.loginItem.isEnabled());
    EXPECT_TRUE(isOn("launchAtLogin"));
    for (const auto& [path, setting, first] :
         {std::tuple{"showTemp", "showTempInMenuBar", true}, std::tuple{"hotkeysOn", "hotkeysEnabled", false},
          std::tuple{"heatAlerts", "heatAlerts", false},
          std::tuple{"lowBattStop", "lowBatteryAutoStop", false}}) {
        EXPECT_EQ(isOn(path), !first) << path;
        click(QString("%1/switch").arg(path));
        EXPECT_EQ(isOn(path), first) << path;
        EXPECT_EQ(stored(setting), first) << path;
        click(QString("%1/switch").arg(path));
        EXPECT_EQ(isOn(path), !first) << path;
        EXPECT_EQ(stored(setting), !first) << path;
    }
    EXPECT_THAT(machine.hotkeys, ElementsAre(false, true));
}

TEST_F(SettingsControls, LeaveTheSwitchOfALoginItemThatFailed) {
    machine.loginItem.breakDown();
    open();
    click("launchAtLogin/switch");
    EXPECT_FALSE(isOn("launchAtLogin"));
}

TEST_F(SettingsControls, ShowACheckForUpdates) {
    open();
    EXPECT_FALSE(isShown("newestVersion"));
    checkWith(R"({"shortVersion":"1.9"})");
    EXPECT_EQ(machine.client.requests().size(), 1U);
    EXPECT_FALSE(isShown("newestVersion")) << "while it lasts";
    advance(1500ms);
    EXPECT_TRUE(isShown("newestVersion"));
    EXPECT_FALSE(isShown("downloadUpdate"));
}

TEST_F(SettingsControls, OfferANewerVersion) {
    open();
    EXPECT_FALSE(isShown("downloadUpdate"));
    checkWith(newerFeed);
    EXPECT_TRUE(isShown("downloadUpdate"));
    advance(1500ms);
    EXPECT_FALSE(isShown("newestVersion"));
    click("downloadUpdate");
    EXPECT_THAT(machine.opener.opened(), ElementsAre("https://corvane.example/get"));
}

TEST_F(SettingsControls, OfferTheVersionThatIsKnownAlready) {
    machine.client.setBody(newerFeed);
    machine.updates->check();
    machine.time.settle();
    open();
    EXPECT_TRUE(isShown("downloadUpdate"));
    EXPECT_FALSE(isShown("newestVersion"));
}

TEST_F(SettingsControls, SayNothingOfUpdatesWithoutAFeed) {
    machine.configureUpdates("");
    open();
    EXPECT_FALSE(isShown("updates"));
    EXPECT_FALSE(isShown("checkForUpdates"));
    EXPECT_TRUE(isShown("uninstall"));
}

TEST_F(SettingsControls, OpenTheIntroduction) {
    open();
    click("showIntroduction");
    EXPECT_EQ(machine.introductions, 1);
}

TEST_F(SettingsControls, SendFeedback) {
    open();
    click("sendFeedback");
    EXPECT_EQ(machine.opener.opened().size(), 1U);
}

TEST_F(SettingsControls, OfferNoFeedbackToNobody) {
    machine.supportMail = "";
    open();
    EXPECT_FALSE(isShown("sendFeedback"));
}

TEST_F(SettingsControls, AreReachedWithTabFromTopToBottom) {
    open();
    std::vector<std::string> order;
    for (int i = 0; i < 10; ++i) {
        press(Qt::Key_Tab);
        order.push_back(focused());
    }
    EXPECT_THAT(order, ElementsAre("launchAtLogin", "showTemp", "hotkeysOn", "heatAlerts", "lowBattStop",
                                   "en", "checkForUpdates", "showIntroduction", "sendFeedback", "uninstall"));
}

TEST_F(SettingsControls, AreScrolledToByTheKeyboard) {
    open();
    press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "uninstall");
    const QRectF place = item("uninstall").mapRectToScene(item("uninstall").boundingRect());
    EXPECT_GE(place.top(), 0);
    EXPECT_LE(place.bottom(), view().height());
}

TEST_F(SettingsControls, AreWorkedWithTheKeyboard) {
    open();
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_TRUE(machine.loginItem.isEnabled());
}

TEST_F(SettingsControls, AreHeard) {
    open();
    checkWith(newerFeed);
    for (const auto& [path, name] : {std::pair{"launchAtLogin", "Launch automatically at login"},
                                     std::pair{"showTemp", "Show temperature in the menu bar"},
                                     std::pair{"hotkeysOn", "Global keyboard shortcuts"},
                                     std::pair{"heatAlerts", "Alerts on heat & throttling"},
                                     std::pair{"lowBattStop", "Auto-stop on low battery"}}) {
        const QString control = QString("%1/switch").arg(path);
        EXPECT_EQ(accessible(control).role(), QAccessible::CheckBox) << path;
        EXPECT_EQ(heard(control), name);
        EXPECT_EQ(accessible(control).state().checked, isOn(path)) << path;
    }
    EXPECT_EQ(heard("hotkeysOn/hint"), "⌥⌘K · Keep awake    ⌥⌘L · Fan boost");
    EXPECT_EQ(accessible("language").role(), QAccessible::Grouping);
    EXPECT_EQ(heard("language"), "Language");
    EXPECT_EQ(accessible("language/en").role(), QAccessible::RadioButton);
    EXPECT_TRUE(accessible("language/en").state().checked);
    for (const char* button :
         {"checkForUpdates", "downloadUpdate", "showIntroduction", "sendFeedback", "uninstall"}) {
        EXPECT_EQ(accessible(button).role(), QAccessible::Button) << button;
        EXPECT_EQ(heard(button), text(button));
    }
}

/// Every text has the room it needs and no more, and lies within the width of the window.
TEST_F(SettingsControls, CutOffNoText) {
    for (const char* language : {"de", "en"}) {
        speak(language);
        open();
        checkWith(newerFeed);
        int texts = 0;
        forEachShown(*view().contentItem(), [&](QQuickItem& each) {
            if (each.inherits("QQuickText")) {
                ++texts;
                const QRectF place = each.mapRectToScene(each.boundingRect());
                const std::string words = each.property("text").toString().toStdString();
                EXPECT_LE(each.property("contentWidth").toReal(), each.width() + 0.5) << words;
                EXPECT_LE(each.property("contentHeight").toReal(), each.height() + 0.5) << words;
                if (each.property("verticalAlignment").toInt() == Qt::AlignTop) {
                    EXPECT_LT(each.height(), each.property("contentHeight").toReal() + 4) << words;
                }
                EXPECT_GE(place.left(), 0) << words;
                EXPECT_LE(place.right(), view().width()) << words;
            }
        });
        EXPECT_GT(texts, 15);
    }
}

TEST_F(SettingsControls, AreInSectionsOneBelowTheOther) {
    for (const char* language : {"de", "en"}) {
        speak(language);
        open();
        checkWith(newerFeed);
        qreal bottom = item("version").mapToScene({0, item("version").height()}).y();
        for (const char* section : {"general", "updates", "help"}) {
            const QQuickItem& each = item(section);
            EXPECT_GE(each.mapToScene({0, 0}).y(), bottom + 8) << section;
            EXPECT_LE(each.mapToScene({0, 0}).y(), bottom + 16) << section;
            bottom = each.mapToScene({0, each.height()}).y();
        }
        EXPECT_NEAR(item("scrollArea").property("contentHeight").toReal(), bottom, 1 + 12);
    }
}

}  // namespace
}  // namespace corvane
