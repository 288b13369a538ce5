#include "tests/app/ui/ControlTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FeatureSectionTest : public ControlTest {
protected:
    FeatureSectionTest() {
        load(
            "FeatureSection { objectName: 'section'; width: 348; emoji: '🌀'; title: 'Fans';"
            " isOn: test.state1 === true; expanded: test.state2 === true || test.state2 === 'inert';"
            " switchDisabled: test.state2 === 'inert'; onSetOn: on => test.ask('on ' + on);"
            " onSetExpanded: expanded => test.ask('expanded ' + expanded);"
            " content: BodyText { objectName: 'body'; text: 'What fans do' } }");
    }
};

TEST_F(FeatureSectionTest, AsksToBeExpandedAndCollapsedByAClickOnItsHeader) {
    click("section/header");
    EXPECT_THAT(asked(), ElementsAre("expanded true"));
    setProperty("state2", true);
    click("section/header");
    EXPECT_THAT(asked(), ElementsAre("expanded false"));
}

TEST_F(FeatureSectionTest, MakesItsBodyWhenItIsFirstExpandedAndShowsItOnlyThen) {
    EXPECT_THROW(static_cast<void>(item("body")), std::exception);
    const double collapsed = item("section").implicitHeight();
    setProperty("state2", true);
    EXPECT_TRUE(isShown("body"));
    EXPECT_GT(item("section").implicitHeight(), collapsed);
    setProperty("state2", false);
    EXPECT_FALSE(isShown("body"));
    EXPECT_EQ(item("section").implicitHeight(), collapsed);
}

TEST_F(FeatureSectionTest, AsksForTheOtherStateByItsSwitchAlone) {
    click("section/switch");
    EXPECT_THAT(asked(), ElementsAre("on true"));
    setProperty("state1", true);
    click("section/switch");
    EXPECT_THAT(asked(), ElementsAre("on false"));
}

TEST_F(FeatureSectionTest, TurnsItsChevronWhenItIsExpanded) {
    const auto chevron = [this]() -> QQuickItem& {
        QQuickItem* found = nullptr;
        forEachShown(item("section"), [&](QQuickItem& each) {
            found = each.property("name") == "chevron.right" ? &each : found;
        });
        return *found;
    };
    EXPECT_EQ(chevron().rotation(), 0);
    setProperty("state2", true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return chevron().rotation() == 90; }));
    setProperty("state2", false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return chevron().rotation() == 0; }));
}

TEST_F(FeatureSectionTest, LeavesADisabledSwitchAlone) {
    EXPECT_EQ(item("section/switch").opacity(), 1);
    setProperty("state2", "inert");
    EXPECT_LT(item("section/switch").opacity(), 0.5);
    click("section/switch");
    EXPECT_THAT(asked(), IsEmpty());
    click("section/header");
    EXPECT_THAT(asked(), ElementsAre("expanded false"));
}

TEST_F(FeatureSectionTest, IsReachedWithTabHeaderFirst) {
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "header");
    press(Qt::Key_Space);
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "switch");
    press(Qt::Key_Space);
    EXPECT_THAT(asked(), ElementsAre("expanded true", "on true"));
}

TEST_F(FeatureSectionTest, TellsAScreenReaderWhetherItIsExpanded) {
    EXPECT_EQ(accessible("section/header").role(), QAccessible::Button);
    EXPECT_EQ(accessibleName("section/header"), "Fans");
    EXPECT_EQ(accessible("section/header").text(QAccessible::Description), "Collapsed");
    setProperty("state2", true);
    EXPECT_EQ(accessible("section/header").text(QAccessible::Description), "Expanded");
    EXPECT_EQ(accessibleName("section/switch"), "Fans");
}

using ScrollAreaTest = ControlTest;

TEST_F(ScrollAreaTest, ScrollsToWhatTheKeyboardGoesTo) {
    load(
        "ScrollArea { objectName: 'area'; width: 300; height: 100; Column { Repeater { model: 10;"
        " PanelButton { objectName: 'button' + index; text: 'Button'; height: 40 } } } }");
    EXPECT_EQ(item("area").property("contentHeight").toDouble(), 400);
    EXPECT_EQ(item("area").implicitHeight(), 400);
    for (int i = 0; i < 10; ++i) {
        press(Qt::Key_Tab);
    }
    ASSERT_EQ(focused(), "button9");
    EXPECT_EQ(item("area").property("contentY").toDouble(), 300);
    for (int i = 0; i < 9; ++i) {
        press(Qt::Key_Tab, Qt::ShiftModifier);
    }
    ASSERT_EQ(focused(), "button0");
    EXPECT_EQ(item("area").property("contentY").toDouble(), 0);
}

using TextsTest = ControlTest;

TEST_F(TextsTest, WrapAndAreNeverCutOff) {
    load(
        "Column { Repeater { model: [bodyText, captionText, headingText]; Loader { sourceComponent: "
        "modelData } } }"
        " Component { id: bodyText; BodyText { objectName: 'body'; width: 90; text: 'several words in a "
        "line' } }"
        " Component { id: captionText; CaptionText { objectName: 'caption'; width: 80; text: 'several words "
        "in a line' } }"
        " Component { id: headingText; HeadingText { objectName: 'heading'; width: 80; text: 'several words "
        "in a line' } }");
    for (const char* name : {"body", "caption", "heading"}) {
        EXPECT_GT(item(name).property("lineCount").toInt(), 1) << name;
        EXPECT_FALSE(item(name).property("truncated").toBool()) << name;
        EXPECT_EQ(accessibleName(name), "several words in a line");
    }
    EXPECT_EQ(accessible("body").role(), QAccessible::StaticText);
    EXPECT_EQ(accessible("heading").role(), QAccessible::Heading);
}

TEST_F(TextsTest, AreShownAsTheyAreWritten) {
    load("BodyText { objectName: 'body'; text: '<b>bold</b>' }");
    EXPECT_GT(item("body").implicitWidth(), 60);
}

}  // namespace
}  // namespace corvane
