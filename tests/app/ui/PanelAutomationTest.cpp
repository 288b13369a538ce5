#include "tests/app/ui/PanelTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PanelAutomation : public PanelTest {
protected:
    PanelAutomation() {
        machine.installed.set({{"org.example.render", "Render", ""},
                               {"org.example.upload", "upload", ""},
                               {"org.example.aether", "Äther", ""}});
    }

    TriggerManager& triggers() { return manager().triggers(); }
    void openSection() {
        open();
        click("automationSection/header");
    }
    void openPicker() {
        openSection();
        click("chooseApp");
        waitForPopups();
    }
    void openThreeRules() {
        openSection();
        for (const char* name : {"A", "B", "C"}) {
            triggers().addApp({QString(name).toLower(), name, std::nullopt});
        }
        settle();
    }
    /// Gives the keyboard to a control of a rule, as Tab does.
    void focusIn(int rule, const QString& control) {
        allShown(control).at(static_cast<std::size_t>(rule))->forceActiveFocus(Qt::TabFocusReason);
        settle();
    }
    std::vector<std::string> shownRules() {
        std::vector<std::string> names;
        for (const QQuickItem* name : allShown("ruleName")) {
            names.push_back(name->property("text").toString().toStdString());
        }
        return names;
    }
    /// The middle of a row of the picker's list.
    QPoint rowPlace(int row) {
        QQuickItem& list = item("applicationList");
        constexpr double rowHeight = 34;
        return list.mapToScene({list.width() / 2, rowHeight * (row + 0.5)}).toPoint();
    }
    std::vector<std::string> rules() {
        std::vector<std::string> names;
        for (const TriggerApp& app : triggers().apps()) {
            names.push_back(app.bundleID.toStdString());
        }
        return names;
    }
};

TEST_F(PanelAutomation, IsSwitched) {
    openSection();
    EXPECT_EQ(text("automationSection/header"), "Automation");
    click("automationSection/switch");
    EXPECT_TRUE(triggers().automationEnabled());
    EXPECT_TRUE(isOn("automationSection/switch"));
    click("automationSection/switch");
    EXPECT_FALSE(triggers().automationEnabled());
}

TEST_F(PanelAutomation, HasTwoConditions) {
    openSection();
    EXPECT_EQ(text("awakeOnAC"), "Awake on AC power");
    click("awakeOnAC/switch");
    EXPECT_TRUE(triggers().keepAwakeOnAC());
    EXPECT_TRUE(isOn("awakeOnAC/switch"));
    EXPECT_EQ(text("awakeWithDisplay"), "Awake with external display");
    click("awakeWithDisplay/switch");
    EXPECT_TRUE(triggers().keepAwakeOnExternalDisplay());
    click("awakeOnAC/switch");
    EXPECT_FALSE(triggers().keepAwakeOnAC());
}

TEST_F(PanelAutomation, SaysWhichRuleHolds) {
    openSection();
    EXPECT_FALSE(isShown("activeReason"));
    click("automationSection/switch");
    click("awakeOnAC/switch");
    EXPECT_EQ(text("activeReason"), "active: " + triggers().activeReason().toStdString());
    EXPECT_TRUE(isShown("activeReason"));
    EXPECT_TRUE(triggers().assertions().holds(SleepAssertions::Kind::system));
}

TEST_F(PanelAutomation, ShowsARuleWithWhatItAsksFor) {
    openSection();
    triggers().addApp({"org.example.render", "<b>Render</b>", std::nullopt});
    settle();
    EXPECT_EQ(text("ruleName"), "<b>Render</b>");
    EXPECT_EQ(text("ruleAction"), "Keep awake only");
    EXPECT_EQ(item("ruleAction").property("symbol"), "");
    triggers().setCooling(CoolingProfile::Kind::balanced, triggers().apps().front());
    settle();
    EXPECT_EQ(text("ruleAction"), "Balanced");
    EXPECT_EQ(item("ruleAction").property("symbol"), "fan.fill");
}

TEST_F(PanelAutomation, GivesARuleAnotherAction) {
    openSection();
    triggers().addApp({"org.example.render", "Render", std::nullopt});
    settle();
    click("ruleAction");
    waitForPopups();
    for (int line = 0; line < 3; ++line) {
        press(Qt::Key_Down);
    }
    press(Qt::Key_Return);
    EXPECT_EQ(triggers().apps().front().cooling, CoolingProfile::Kind::max);
    EXPECT_EQ(text("ruleAction"), "Max");
}

TEST_F(PanelAutomation, RemovesARule) {
    openSection();
    triggers().addApp({"org.example.render", "Render", std::nullopt});
    settle();
    click("removeRule");
    EXPECT_THAT(rules(), IsEmpty());
    EXPECT_FALSE(isShown("ruleName"));
}

TEST_F(PanelAutomation, SaysWhatARuleAsksForInTheLanguageOfTheMoment) {
    openSection();
    triggers().addApp({"org.example.render", "Render", CoolingProfile::Kind::silent});
    settle();
    EXPECT_EQ(text("ruleAction"), "Silent");
    machine.speak("de");
    settle();
    EXPECT_EQ(text("ruleAction"), "Leise");
    triggers().setCooling(std::nullopt, triggers().apps().front());
    settle();
    EXPECT_EQ(text("ruleAction"), "Nur wach halten");
}

TEST_F(PanelAutomation, LeavesTheKeyboardAtTheRuleThatIsChanged) {
    openThreeRules();
    focusIn(1, "ruleAction");
    QQuickItem* action = focused();
    press(Qt::Key_Down);
    waitForPopups();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    waitForPopups();
    EXPECT_EQ(triggers().apps().at(1).cooling, CoolingProfile::Kind::silent);
    EXPECT_EQ(focused(), action);
    EXPECT_EQ(action->property("text"), "Silent");
    EXPECT_TRUE(action->property("visualFocus").toBool());
}

TEST_F(PanelAutomation, LeadsTheKeyboardFromARuleThatIsRemovedToTheNext) {
    openThreeRules();
    focusIn(1, "removeRule");
    press(Qt::Key_Space);
    EXPECT_THAT(rules(), ElementsAre("a", "c"));
    ASSERT_NE(focused(), nullptr);
    EXPECT_EQ(focused()->property("text"), "Remove C");
    EXPECT_TRUE(focused()->property("visualFocus").toBool());
    press(Qt::Key_Space);
    EXPECT_THAT(rules(), ElementsAre("a"));
    ASSERT_NE(focused(), nullptr);
    EXPECT_EQ(focused()->objectName(), "chooseApp");
}

TEST_F(PanelAutomation, ShowsEachRuleOnceWhicheverIsRemoved) {
    openThreeRules();
    const QStringList warnings = warningsOf([&] {
        triggers().removeApp(triggers().apps().front());
        settle();
        EXPECT_THAT(shownRules(), ElementsAre("B", "C"));
        triggers().addApp({"d", "D", std::nullopt});
        settle();
        EXPECT_THAT(shownRules(), ElementsAre("B", "C", "D"));
        triggers().removeApp(triggers().apps().back());
        settle();
        EXPECT_THAT(shownRules(), ElementsAre("B", "C"));
    });
    EXPECT_EQ(warnings.join('\n').toStdString(), "");
}

TEST_F(PanelAutomation, AddsAnApplicationThatIsPicked) {
    openPicker();
    EXPECT_TRUE(isShown("applicationList"));
    EXPECT_EQ(text("chooseApplication"), "Choose");
    EXPECT_EQ(text("cancelApplication"), "Cancel");
    // "Äther" comes first.
    click("chooseApplication");
    waitForPopups();
    EXPECT_THAT(rules(), ElementsAre("org.example.aether"));
    EXPECT_EQ(triggers().apps().front().cooling, std::nullopt);
    EXPECT_FALSE(isShown("applicationList"));
}

TEST_F(PanelAutomation, GivesTheKeyboardBackAfterThePick) {
    openSection();
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        item("chooseApp").forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_Space);
        waitForPopups();
        ASSERT_EQ(focused()->objectName(), "applicationSearch");
        press(key);
        waitForPopups();
        ASSERT_NE(focused(), nullptr);
        EXPECT_EQ(focused()->objectName(), "chooseApp");
        EXPECT_TRUE(item("chooseApp").property("visualFocus").toBool());
    }
    EXPECT_THAT(rules(), ElementsAre("org.example.aether"));
}

TEST_F(PanelAutomation, FindsAnApplicationByItsName) {
    openPicker();
    type("LOAD");
    EXPECT_EQ(machine.applicationsModel.count(), 1);
    press(Qt::Key_Return);
    EXPECT_THAT(rules(), ElementsAre("org.example.upload"));
}

TEST_F(PanelAutomation, WalksTheListFromTheSearch) {
    openPicker();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_THAT(rules(), ElementsAre("org.example.render"));
}

TEST_F(PanelAutomation, TakesTheApplicationThatIsClickedTwice) {
    openPicker();
    QTest::mouseDClick(window.get(), Qt::LeftButton, Qt::NoModifier, rowPlace(2));
    settle();
    EXPECT_THAT(rules(), ElementsAre("org.example.upload"));
}

TEST_F(PanelAutomation, AddsNothingWhenThePickIsCancelled) {
    openPicker();
    click("cancelApplication");
    waitForPopups();
    EXPECT_FALSE(isShown("applicationList"));
    click("chooseApp");
    waitForPopups();
    press(Qt::Key_Escape);
    waitForPopups();
    EXPECT_FALSE(isShown("applicationList"));
    EXPECT_THAT(rules(), IsEmpty());
}

TEST_F(PanelAutomation, SaysThatNothingMatches) {
    openPicker();
    EXPECT_FALSE(isShown("noApplications"));
    type("xyz");
    EXPECT_TRUE(isShown("noApplications"));
    EXPECT_EQ(text("noApplications"), "No app matches the search");
    EXPECT_FALSE(item("chooseApplication").isEnabled());
    press(Qt::Key_Return);
    EXPECT_THAT(rules(), IsEmpty());
    EXPECT_TRUE(isShown("applicationList"));
}

TEST_F(PanelAutomation, SaysThatThereAreNoApplications) {
    machine.installed.set({});
    openPicker();
    EXPECT_EQ(text("noApplications"), "No apps found");
    EXPECT_TRUE(isShown("noApplications"));
}

TEST_F(PanelAutomation, ForgetsTheSearchOfTheLastTime) {
    openPicker();
    type("xyz");
    press(Qt::Key_Escape);
    waitForPopups();
    click("chooseApp");
    waitForPopups();
    EXPECT_EQ(text("applicationSearch"), "");
    EXPECT_EQ(machine.applicationsModel.count(), 3);
}

}  // namespace
}  // namespace corvane
