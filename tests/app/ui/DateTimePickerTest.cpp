#include <QDateTime>

#include "tests/app/ui/ControlTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DateTimePickerTest : public ControlTest {
protected:
    void loadPicker() {
        load(
            "DateTimePicker { objectName: 'picker'; width: 300; value: test.state1;"
            " onChosen: value => test.ask(Qt.formatDateTime(value, 'yyyy-MM-dd hh:mm')) }",
            QDateTime({2026, 3, 30}, {14, 5}));
    }
    std::string title() { return item("monthTitle").property("text").toString().toStdString(); }
    double column(const char* day) { return item(day).x() / item(day).width(); }
};

TEST_F(DateTimePickerTest, ShowsTheMonthTheDayAndTheTime) {
    loadPicker();
    EXPECT_EQ(title(), "March 2026");
    EXPECT_TRUE(item("day30").property("isChosen").toBool());
    EXPECT_FALSE(item("day29").property("isChosen").toBool());
    EXPECT_TRUE(isShown("day31"));
    EXPECT_EQ(item("hour").property("displayText").toString(), "14");
    EXPECT_EQ(item("minute").property("displayText").toString(), "05");
}

TEST_F(DateTimePickerTest, BeginsTheWeekOnSundayInEnglish) {
    loadPicker();
    EXPECT_EQ(column("day1"), 0);  // a Sunday
    EXPECT_EQ(column("day30"), 1);
}

TEST_F(DateTimePickerTest, BeginsTheWeekOnMondayInGerman) {
    speakGerman();
    loadPicker();
    EXPECT_EQ(title(), "März 2026");
    EXPECT_EQ(column("day1"), 6);
    EXPECT_EQ(column("day30"), 0);
}

TEST_F(DateTimePickerTest, TellsTheClickedDayAtTheSameTime) {
    loadPicker();
    click("day12");
    EXPECT_THAT(asked(), ElementsAre("2026-03-12 14:05"));
    EXPECT_TRUE(item("day30").property("isChosen").toBool());
}

TEST_F(DateTimePickerTest, TurnsToOtherMonthsWithoutChoosing) {
    loadPicker();
    click("nextMonth");
    EXPECT_EQ(title(), "April 2026");
    EXPECT_FALSE(isShownAt(*window->contentItem(), "day31"));
    EXPECT_FALSE(item("day30").property("isChosen").toBool());
    click("previousMonth");
    click("previousMonth");
    EXPECT_EQ(title(), "February 2026");
    EXPECT_THAT(asked(), IsEmpty());
    click("day28");
    EXPECT_THAT(asked(), ElementsAre("2026-02-28 14:05"));
}

TEST_F(DateTimePickerTest, MovesByDaysWeeksAndMonthsWithTheKeyboard) {
    loadPicker();
    focus("monthGrid");
    press(Qt::Key_Left);
    press(Qt::Key_Right);
    press(Qt::Key_Up);
    press(Qt::Key_Down);
    press(Qt::Key_PageUp);
    press(Qt::Key_PageDown);
    EXPECT_THAT(asked(), ElementsAre("2026-03-29 14:05", "2026-03-31 14:05", "2026-03-23 14:05",
                                     "2026-04-06 14:05", "2026-02-28 14:05", "2026-04-30 14:05"));
}

TEST_F(DateTimePickerTest, FollowsTheValueToItsMonth) {
    loadPicker();
    setProperty("state1", QDateTime({2027, 1, 5}, {8, 0}));
    EXPECT_EQ(title(), "January 2027");
    EXPECT_TRUE(item("day5").property("isChosen").toBool());
    EXPECT_EQ(item("hour").property("displayText").toString(), "08");
}

TEST_F(DateTimePickerTest, ChangesTheTimeByStepsThatGoRound) {
    loadPicker();
    focus("minute");
    press(Qt::Key_Up);
    EXPECT_THAT(asked(), ElementsAre("2026-03-30 14:06"));
    setProperty("state1", QDateTime({2026, 3, 30}, {23, 59}));
    focus("hour");
    press(Qt::Key_Up);
    EXPECT_THAT(asked(), ElementsAre("2026-03-30 00:59"));
}

TEST_F(DateTimePickerTest, TakesATypedTime) {
    loadPicker();
    press(Qt::Key_Tab);  // previous month
    press(Qt::Key_Tab);  // next month
    press(Qt::Key_Tab);  // days
    press(Qt::Key_Tab);  // hour
    press(Qt::Key_0);
    press(Qt::Key_9);
    press(Qt::Key_Return);
    EXPECT_THAT(asked(), ElementsAre("2026-03-30 09:05"));
}

TEST_F(DateTimePickerTest, IsHeardWithFullDatesAndNamedFields) {
    loadPicker();
    EXPECT_EQ(accessibleName("monthGrid"), "Monday, March 30, 2026");
    EXPECT_EQ(accessibleName("day30"), "Monday, March 30, 2026");
    EXPECT_TRUE(accessible("day30").state().checked);
    EXPECT_EQ(accessible("hour").role(), QAccessible::SpinBox);
    EXPECT_EQ(accessibleName("hour"), "Hour");
    EXPECT_EQ(accessibleName("minute"), "Minute");
    EXPECT_EQ(accessibleName("previousMonth"), "Previous month");
    doAccessibly("day3", QAccessibleActionInterface::pressAction());
    EXPECT_THAT(asked(), ElementsAre("2026-03-03 14:05"));
}

TEST_F(DateTimePickerTest, IsHeardAsTheChosenDayOrElseAsItsMonth) {
    loadPicker();
    focus("monthGrid");
    setProperty("state1", QDateTime({2026, 3, 31}, {14, 5}));
    EXPECT_EQ(accessibleName("monthGrid"), "Tuesday, March 31, 2026");
    click("nextMonth");
    EXPECT_EQ(accessibleName("monthGrid"), "April 2026");
}

TEST_F(DateTimePickerTest, TakesATimeFromAssistiveTechnologies) {
    loadPicker();
    setAccessibly("hour", 9);
    EXPECT_THAT(asked(), ElementsAre("2026-03-30 09:05"));
    doAccessibly("hour", QAccessibleActionInterface::increaseAction());
    EXPECT_THAT(asked(), ElementsAre("2026-03-30 15:05"));
    doAccessibly("minute", QAccessibleActionInterface::decreaseAction());
    EXPECT_THAT(asked(), ElementsAre("2026-03-30 14:04"));
    setAccessibly("minute", 60);
    EXPECT_THAT(asked(), ElementsAre("2026-03-30 14:59"));
    EXPECT_EQ(accessible("minute").valueInterface()->maximumValue(), 59);
}

TEST_F(DateTimePickerTest, ShowsTheTimeThatIsSoNotTheOneThatWasAskedFor) {
    loadPicker();
    focus("hour");
    press(Qt::Key_Up);
    EXPECT_EQ(item("hour").property("displayText").toString(), "14");
    setProperty("state1", QDateTime({2026, 3, 30}, {20, 5}));
    EXPECT_EQ(item("hour").property("displayText").toString(), "20");
}

}  // namespace
}  // namespace corvane
