#include "tests/app/ui/ControlTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SegmentedControlTest : public ControlTest {
protected:
    SegmentedControlTest() {
        load(
            "SegmentedControl { objectName: 'choice'; accessibleName: 'Mode'; width: 300; y: 20;"
            " model: [{label: 'Manual', value: 'manual'}, {label: 'Auto', value: 'auto'}, {label: 'Off', "
            "value: 3}];"
            " value: test.state1; onChosen: value => test.ask(value) }",
            "auto");
    }

    /// The segments, from left to right.
    QQuickItem& segment(int index) {
        std::vector<QQuickItem*> segments;
        forEachShown(item("choice"), [&](QQuickItem& each) {
            if (each.property("isChosen").isValid()) {
                segments.push_back(&each);
            }
        });
        return *segments.at(static_cast<std::size_t>(index));
    }
    bool isChosen(int index) { return segment(index).property("isChosen").toBool(); }
    void clickSegment(int index) {
        segment(index).setObjectName("clicked");
        click("clicked");
    }
};

TEST_F(SegmentedControlTest, ShowsTheValueAndNothingElse) {
    EXPECT_FALSE(isChosen(0));
    EXPECT_TRUE(isChosen(1));
    EXPECT_FALSE(isChosen(2));
    setProperty("state1", 3);
    EXPECT_TRUE(isChosen(2));
    setProperty("state1", "unknown");
    EXPECT_FALSE(isChosen(0) || isChosen(1) || isChosen(2));
}

TEST_F(SegmentedControlTest, AsksForTheValueOfAClickedSegmentAndGoesOnShowingWhatIsSo) {
    clickSegment(0);
    EXPECT_THAT(asked(), ElementsAre("manual"));
    EXPECT_TRUE(isChosen(1));
}

TEST_F(SegmentedControlTest, IsOneStopForTheKeyboardWhoseArrowKeysAskForTheNeighbours) {
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), &segment(1));
    press(Qt::Key_Right);
    EXPECT_THAT(asked(), ElementsAre("3"));
    setProperty("state1", 3);
    press(Qt::Key_Right);
    EXPECT_THAT(asked(), IsEmpty());
    press(Qt::Key_Left);
    EXPECT_THAT(asked(), ElementsAre("auto"));
}

TEST_F(SegmentedControlTest, IsReachedWithTabThoughNothingIsChosen) {
    setProperty("state1", "unknown");
    press(Qt::Key_Tab);
    EXPECT_EQ(window->activeFocusItem(), &segment(0));
}

TEST_F(SegmentedControlTest, TellsAScreenReaderWhatCanBeChosenAndWhatIs) {
    EXPECT_EQ(accessible("choice").role(), QAccessible::Grouping);
    EXPECT_EQ(accessibleName("choice"), "Mode");
    segment(1).setObjectName("auto");
    EXPECT_EQ(accessible("auto").role(), QAccessible::RadioButton);
    EXPECT_EQ(accessibleName("auto"), "Auto");
    EXPECT_TRUE(accessible("auto").state().checked);
    segment(0).setObjectName("manual");
    EXPECT_FALSE(accessible("manual").state().checked);
    doAccessibly("manual", QAccessibleActionInterface::pressAction());
    EXPECT_THAT(asked(), ElementsAre("manual"));
}

class DurationChipTest : public ControlTest {
protected:
    DurationChipTest() {
        load(
            "DurationChip { objectName: 'chip'; x: 20; y: 20; label: '8 h'; isSelected: test.state1 === true;"
            " onClicked: test.ask('clicked') }");
    }
};

TEST_F(DurationChipTest, IsClickedWithMouseAndKeyboard) {
    click("chip");
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_THAT(asked(), ElementsAre("clicked", "clicked"));
}

TEST_F(DurationChipTest, IsHeardAsAChoiceThatIsMadeOrNot) {
    EXPECT_EQ(accessible("chip").role(), QAccessible::RadioButton);
    EXPECT_EQ(accessibleName("chip"), "8 h");
    EXPECT_FALSE(accessible("chip").state().checked);
    setProperty("state1", true);
    EXPECT_TRUE(accessible("chip").state().checked);
}

TEST_F(DurationChipTest, IsFilledWithTheAccentColorWhenItIsSelected) {
    setProperty("state1", true);
    EXPECT_TRUE(QTest::qWaitFor([this] { return picture().pixelColor(40, 23) == QColor("#096683"); }));
}

class ModeRowTest : public ControlTest {
protected:
    ModeRowTest() {
        load(
            "ModeRow { objectName: 'row'; y: 20; width: 340; symbol: 'display'; title: 'Keep display awake';"
            " subtitle: 'Until noon'; isOn: test.state1 === true; onClicked: test.ask('clicked') }");
    }
};

TEST_F(ModeRowTest, IsClickedAnywhereAndWithTheKeyboard) {
    click("row");
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_THAT(asked(), ElementsAre("clicked", "clicked"));
}

TEST_F(ModeRowTest, ShowsWhatIsSo) {
    const QImage off = picture();
    click("row");
    EXPECT_FALSE(item("row").property("isOn").toBool());
    setProperty("state1", true);
    EXPECT_NE(picture(), off);
}

TEST_F(ModeRowTest, IsHeardWithItsStateAndSubtitle) {
    EXPECT_EQ(accessible("row").role(), QAccessible::CheckBox);
    EXPECT_EQ(accessibleName("row"), "Keep display awake");
    EXPECT_EQ(accessible("row").text(QAccessible::Description), "Until noon");
    setProperty("state1", true);
    EXPECT_TRUE(accessible("row").state().checked);
}

}  // namespace
}  // namespace corvane
