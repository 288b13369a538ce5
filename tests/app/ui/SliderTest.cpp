#include "tests/app/ui/ControlTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class PanelSliderTest : public ControlTest {
protected:
    PanelSliderTest() {
        load(
            "PanelSlider { id: slider; objectName: 'slider'; accessibleName: 'Fixed strength'; width: 218; "
            "y: 20;"
            " from: 0; to: 100; stepSize: 5; shown: test.state1;"
            " onChosen: value => { test.ask(value); test.state1 = Math.max(10, value); }"
            " onReleased: test.ask('released') }",
            40);
    }

    QPoint at(double percent) {
        return item("slider").mapToScene(QPointF(9 + 2 * percent, item("slider").height() / 2)).toPoint();
    }
    double value() { return item("slider").property("value").toDouble(); }
};

TEST_F(PanelSliderTest, ShowsTheValue) {
    EXPECT_EQ(value(), 40);
    setProperty("state1", 75);
    EXPECT_EQ(value(), 75);
}

TEST_F(PanelSliderTest, TellsEachStepOfADragAndThenItsEnd) {
    QTest::mousePress(window.get(), Qt::LeftButton, Qt::NoModifier, at(40));
    QTest::mouseMove(window.get(), at(60));
    QTest::mouseMove(window.get(), at(71));
    EXPECT_EQ(value(), 70);
    const std::vector<std::string> steps = asked();
    EXPECT_THAT(steps, Not(IsEmpty()));
    EXPECT_EQ(steps.back(), "70");

    QTest::mouseRelease(window.get(), Qt::LeftButton, Qt::NoModifier, at(71));
    EXPECT_EQ(asked().back(), "released");
}

TEST_F(PanelSliderTest, FollowsTheValueAgainAfterADrag) {
    QTest::mousePress(window.get(), Qt::LeftButton, Qt::NoModifier, at(40));
    QTest::mouseMove(window.get(), at(60));
    QTest::mouseRelease(window.get(), Qt::LeftButton, Qt::NoModifier, at(60));
    setProperty("state1", 20);
    EXPECT_EQ(value(), 20);
}

TEST_F(PanelSliderTest, IsSteppedWithTheArrowKeys) {
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "slider");
    press(Qt::Key_Right);
    EXPECT_EQ(value(), 45);
    EXPECT_THAT(asked(), ElementsAre("45", "released"));
    press(Qt::Key_Left);
    EXPECT_THAT(asked(), ElementsAre("40", "released"));
}

TEST_F(PanelSliderTest, ShowsWhatIsSoNotWhatWasAskedFor) {
    QTest::mouseClick(window.get(), Qt::LeftButton, Qt::NoModifier, at(0));
    EXPECT_EQ(asked().front(), "0");
    EXPECT_EQ(value(), 10);
    setProperty("state1", 20);
    EXPECT_EQ(value(), 20);
}

TEST_F(PanelSliderTest, TellsWhatAssistiveTechnologiesSet) {
    setAccessibly("slider", 30);
    EXPECT_THAT(asked(), ElementsAre("30"));
    doAccessibly("slider", QAccessibleActionInterface::increaseAction());
    EXPECT_THAT(asked(), ElementsAre("35"));
    doAccessibly("slider", QAccessibleActionInterface::decreaseAction());
    EXPECT_THAT(asked(), ElementsAre("30"));
    EXPECT_EQ(value(), 30);
    setProperty("state1", 75);
    EXPECT_EQ(value(), 75);
}

TEST_F(PanelSliderTest, TakesTheNearestStepOfWhatAssistiveTechnologiesSet) {
    setAccessibly("slider", 63);
    EXPECT_THAT(asked(), ElementsAre("65"));
    EXPECT_EQ(value(), 65);
    setAccessibly("slider", 66);
    EXPECT_EQ(value(), 65);
}

TEST_F(PanelSliderTest, IsHeardWithItsNameValueAndRange) {
    EXPECT_EQ(accessible("slider").role(), QAccessible::Slider);
    EXPECT_EQ(accessibleName("slider"), "Fixed strength");
    QAccessibleValueInterface* values = accessible("slider").valueInterface();
    ASSERT_NE(values, nullptr);
    EXPECT_EQ(values->currentValue().toDouble(), 40);
    EXPECT_EQ(values->minimumValue().toDouble(), 0);
    EXPECT_EQ(values->maximumValue().toDouble(), 100);
}

}  // namespace
}  // namespace corvane
