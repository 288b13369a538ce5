#include "app/shell/LocalTime.h"
#include "tests/app/menu/MenuMachine.h"

namespace corvane {
namespace {

using MenuSession = MenuTest;

// The switch

TEST_F(MenuSession, SwitchesOnForADayAndExpands) {
    menu().toggleAwake(true);
    EXPECT_EQ(manager().activeKinds(), (Kinds{Kind::system, Kind::display}));
    EXPECT_EQ(manager().expiresAt(), in(24h));
    EXPECT_TRUE(menu().expandAwake());
    EXPECT_EQ(menu().selectedSleepSeconds(), 0) << "no chip was chosen";
}

TEST_F(MenuSession, SwitchesOffWithoutAWordAndCollapses) {
    menu().toggleAwake(true);
    menu().toggleAwake(false);
    EXPECT_TRUE(machine.isIdle());
    EXPECT_FALSE(menu().expandAwake());
    machine.advance(25h);
    EXPECT_THAT(machine.center.posted(), testing::IsEmpty());
}

TEST_F(MenuSession, SwitchesOffNothingElse) {
    manager().lid().setEnabled(true);
    menu().toggleAwake(true);
    menu().toggleAwake(false);
    EXPECT_TRUE(manager().lid().enabled());
    EXPECT_EQ(machine.power.held().size(), 1U);
}

TEST_F(MenuSession, CountsFromTheTimeItIsAndNotFromTheOneThatIsShown) {
    machine.advance(90min);
    ASSERT_NE(manager().now(), machine.wallTime());
    menu().toggleAwake(true);
    EXPECT_EQ(manager().expiresAt(), in(24h));
    EXPECT_FALSE(menu().expandLid());
}

// The chips

TEST_F(MenuSession, LastsAsLongAsTheChipSays) {
    for (const DurationChoice& choice : menu().sleepDurations()) {
        menu().applySleepDuration(choice.seconds);
        EXPECT_EQ(manager().expiresAt(), in(std::chrono::seconds(choice.seconds)));
        EXPECT_EQ(menu().selectedSleepSeconds(), choice.seconds);
        machine.advance(1s);
    }
}

TEST_F(MenuSession, KeepsTheKindsThatAreActive) {
    manager().toggle(QStringLiteral("network"));
    menu().applySleepDuration(3600);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::network});
    EXPECT_EQ(manager().expiresAt(), in(1h));
}

TEST_F(MenuSession, BeginsWithSystemAndDisplay) {
    menu().applySleepDuration(3600);
    EXPECT_EQ(manager().activeKinds(), (Kinds{Kind::system, Kind::display}));
}

TEST_F(MenuSession, ShowsTheChipAsChosenWhileItsSessionRuns) {
    SignalCount changes(menu(), &MenuState::selectedSleepSecondsChanged);
    menu().applySleepDuration(3600);
    EXPECT_GE(changes.take(), 1);
    manager().toggle(Kind::network);
    EXPECT_EQ(menu().selectedSleepSeconds(), 3600) << "another kind leaves the end as it is";
    machine.advance(59min);
    EXPECT_EQ(menu().selectedSleepSeconds(), 3600);
    machine.advance(1min);
    EXPECT_EQ(menu().selectedSleepSeconds(), 0);
    EXPECT_GE(changes.take(), 1);
}

TEST_F(MenuSession, ForgetsTheChipWhenAnythingElseSetsTheEnd) {
    menu().applySleepDuration(3600);
    machine.advance(1s);
    menu().toggleAwake(true);
    EXPECT_EQ(menu().selectedSleepSeconds(), 0);
    menu().applySleepDuration(3600);
    menu().toggleAwake(false);
    EXPECT_EQ(menu().selectedSleepSeconds(), 0);
}

// The custom end

TEST_F(MenuSession, EndsAtTheCustomEndAndClosesThePicker) {
    menu().setShowingCustomPicker(true);
    menu().setCustomDate(localTime(in(5h)));
    EXPECT_TRUE(machine.isIdle()) << "it is not applied yet";
    menu().applyCustomDate();
    EXPECT_EQ(manager().expiresAt(), in(5h));
    EXPECT_EQ(manager().activeKinds(), (Kinds{Kind::system, Kind::display}));
    EXPECT_FALSE(menu().showingCustomPicker());
    EXPECT_EQ(menu().selectedSleepSeconds(), 0);
}

TEST_F(MenuSession, EndsSoonAtACustomEndThatHasPassed) {
    menu().setCustomDate(localTime(in(-1h)));
    menu().applyCustomDate();
    EXPECT_FALSE(machine.isIdle());
    machine.advance(1s);
    EXPECT_TRUE(machine.isIdle());
}

TEST_F(MenuSession, TakesACustomEndOfAnyTimeZoneAsLocalTime) {
    menu().setCustomDate(localTime(in(5h)).toOffsetFromUtc(7 * 3600));
    EXPECT_EQ(menu().customDate().timeSpec(), Qt::LocalTime);
    menu().applyCustomDate();
    EXPECT_EQ(manager().expiresAt(), in(5h));
}

TEST_F(MenuSession, PassesOverACustomEndThatIsNoneOrBeyondTheCalendar) {
    const QDateTime before = menu().customDate();
    menu().setCustomDate(QDateTime());
    menu().setCustomDate(QDateTime(QDate(2500, 1, 1), QTime(0, 0)));
    menu().setCustomDate(QDateTime(QDate(1600, 1, 1), QTime(0, 0)));
    EXPECT_EQ(menu().customDate(), before);
}

// The kinds

TEST_F(MenuSession, TogglesAKindByItsName) {
    manager().toggle(QStringLiteral("display"));
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::display});
    manager().toggle(QStringLiteral("display"));
    EXPECT_TRUE(machine.isIdle());
    manager().toggle(QStringLiteral("Display"));
    EXPECT_TRUE(machine.isIdle()) << "there is no such kind";
}

}  // namespace
}  // namespace corvane
