#include <QDateTime>

#include "app/shell/LocalTime.h"
#include "tests/app/ui/PanelTest.h"

namespace corvane {
namespace {

class PanelAwake : public PanelTest {
protected:
    using Kind = SleepAssertions::Kind;
    using Kinds = SleepAssertions::Kinds;

    PanelAwake() { open(); }

    void expectEndIn(Duration duration) {
        EXPECT_EQ(manager().expiresAt(),
                  machine.wallTime() + std::chrono::duration_cast<WallTime::duration>(duration));
    }
    void expand() {
        click("keepAwakeSection/header");
        ASSERT_TRUE(machine.menu->expandAwake());
    }
};

TEST_F(PanelAwake, BeginsASessionOfADayWithTheSwitch) {
    EXPECT_EQ(text("keepAwakeSection/header"), "Stay awake");
    EXPECT_FALSE(isOn("keepAwakeSection/switch"));
    click("keepAwakeSection/switch");
    EXPECT_EQ(manager().activeKinds(), (Kinds{Kind::system, Kind::display}));
    expectEndIn(24h);
    EXPECT_TRUE(isOn("keepAwakeSection/switch"));
    EXPECT_TRUE(isShown("keepAwakeSection/kind-system"));
}

TEST_F(PanelAwake, EndsTheSessionWithTheSwitch) {
    click("keepAwakeSection/switch");
    click("keepAwakeSection/switch");
    EXPECT_TRUE(machine.isIdle());
    EXPECT_FALSE(isOn("keepAwakeSection/switch"));
    EXPECT_FALSE(isShown("keepAwakeSection/kind-system"));
}

TEST_F(PanelAwake, OpensAndClosesWithAClickOnItsHead) {
    EXPECT_FALSE(isShown("keepAwakeSection/kind-system"));
    expand();
    EXPECT_TRUE(isShown("keepAwakeSection/kind-system"));
    click("keepAwakeSection/header");
    EXPECT_FALSE(isShown("keepAwakeSection/kind-system"));
    EXPECT_TRUE(machine.isIdle());
}

TEST_F(PanelAwake, TogglesEachKind) {
    expand();
    const std::vector<std::pair<const char*, Kind>> rows{
        {"kind-system", Kind::system}, {"kind-display", Kind::display}, {"kind-network", Kind::network}};
    for (const auto& [name, kind] : rows) {
        click(name);
        EXPECT_EQ(manager().activeKinds(), Kinds{kind}) << name;
        EXPECT_TRUE(isOn(name)) << name;
        click(name);
        EXPECT_EQ(manager().activeKinds(), Kinds{}) << name;
        EXPECT_FALSE(isOn(name)) << name;
    }
}

TEST_F(PanelAwake, NamesTheKindsAsEverywhere) {
    expand();
    for (const char* language : {"en", "de"}) {
        machine.speak(language);
        settle();
        for (const Kind kind : SleepAssertions::allKinds) {
            const QString name = QStringLiteral("kind-") + SleepAssertions::rawValue(kind).data();
            EXPECT_EQ(text(name), SleepAssertions::label(kind, machine.lang));
        }
    }
}

TEST_F(PanelAwake, EndsTheSessionAfterTheChosenDuration) {
    expand();
    for (const int seconds : {3600, 14400, 28800, 43200, 86400}) {
        const QString chip = QStringLiteral("duration-%1").arg(seconds);
        click(chip);
        expectEndIn(std::chrono::seconds(seconds));
        EXPECT_EQ(item(chip).property("isSelected"), true) << seconds;
    }
    EXPECT_EQ(item("duration-3600").property("isSelected"), false);
}

TEST_F(PanelAwake, EndsTheSessionAtATimeOfTheUsers) {
    expand();
    EXPECT_FALSE(isShown("customDate"));
    EXPECT_EQ(item("customEndTime/chevron").property("name"), "chevron.down");
    click("customEndTime");
    EXPECT_TRUE(isShown("customDate"));
    EXPECT_EQ(item("customEndTime/chevron").property("name"), "chevron.up");
    click("applyCustomDate");
    // Twelve hours from the start, 20 s ago, as the calendar shows it: to the millisecond.
    ASSERT_TRUE(manager().expiresAt());
    EXPECT_EQ(localTime(*manager().expiresAt()), machine.menu->customDate());
    EXPECT_FALSE(isShown("customDate"));
    EXPECT_FALSE(machine.menu->showingCustomPicker());
}

TEST_F(PanelAwake, TakesTheHourAndTheDayThatAreChosen) {
    expand();
    click("customEndTime");
    const QDateTime before = machine.menu->customDate();
    item("customDate/hour").forceActiveFocus(Qt::TabFocusReason);
    type("07");
    press(Qt::Key_Tab);
    EXPECT_EQ(machine.menu->customDate(), QDateTime(before.date(), QTime(7, before.time().minute())));
    click("applyCustomDate");
    EXPECT_EQ(localTime(*manager().expiresAt()), machine.menu->customDate());
}

}  // namespace
}  // namespace corvane
