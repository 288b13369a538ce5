#include "tests/app/menu/MenuMachine.h"

namespace corvane {
namespace {

class MenuLid : public MenuTest {
protected:
    MenuLid() : MenuTest(40) {}

    LidManager& lid() { return manager().lid(); }
    bool isWarned() { return machine.defaults.get<bool>("closedLidWarned").value_or(false); }
};

TEST_F(MenuLid, AsksBeforeItIsSwitchedOnForTheFirstTime) {
    menu().toggleClosedLid(true);
    EXPECT_TRUE(menu().isAskingAboutLid());
    EXPECT_FALSE(lid().enabled());
    EXPECT_FALSE(isWarned());
}

TEST_F(MenuLid, IsSwitchedOnWhenTheUserAcceptsAndAsksNeverAgain) {
    menu().toggleClosedLid(true);
    menu().answerLidWarning(true);
    EXPECT_FALSE(menu().isAskingAboutLid());
    EXPECT_TRUE(lid().enabled());
    EXPECT_TRUE(isWarned());

    menu().toggleClosedLid(false);
    EXPECT_FALSE(lid().enabled());
    menu().toggleClosedLid(true);
    EXPECT_FALSE(menu().isAskingAboutLid());
    EXPECT_TRUE(lid().enabled());
}

TEST_F(MenuLid, StaysOffWhenTheUserCancelsAndAsksAgainTheNextTime) {
    menu().toggleClosedLid(true);
    SignalCount announced(lid(), &LidManager::enabledChanged);
    menu().answerLidWarning(false);
    EXPECT_EQ(announced.take(), 1) << "the switch snaps back";
    EXPECT_FALSE(menu().isAskingAboutLid());
    EXPECT_FALSE(lid().enabled());
    EXPECT_EQ(machine.defaults.value("closedLidWarned"), std::nullopt);

    menu().toggleClosedLid(true);
    EXPECT_TRUE(menu().isAskingAboutLid());
}

TEST_F(MenuLid, AsksNothingOfAUserWhoWasWarnedInAnEarlierRun) {
    machine.defaults.set("closedLidWarned", true);
    menu().toggleClosedLid(true);
    EXPECT_FALSE(menu().isAskingAboutLid());
    EXPECT_TRUE(lid().enabled());
}

TEST_F(MenuLid, AsksWhenWhatIsStoredIsNoBoolean) {
    machine.defaults.set("closedLidWarned", std::string("true"));
    menu().toggleClosedLid(true);
    EXPECT_TRUE(menu().isAskingAboutLid());
}

TEST_F(MenuLid, IsSwitchedOffWithoutAQuestion) {
    lid().setEnabled(true);
    menu().toggleClosedLid(false);
    EXPECT_FALSE(lid().enabled());
    EXPECT_FALSE(menu().isAskingAboutLid());
}

TEST_F(MenuLid, IgnoresAnAnswerToNoQuestion) {
    menu().answerLidWarning(true);
    EXPECT_FALSE(lid().enabled());
    EXPECT_FALSE(isWarned());
    lid().setEnabled(true);
    menu().answerLidWarning(false);
    EXPECT_TRUE(lid().enabled());
}

TEST_F(MenuLid, KeepsTheQuestionWhileThePanelIsClosed) {
    menu().panelAppeared();
    menu().toggleClosedLid(true);
    menu().panelDisappeared();
    menu().panelAppeared();
    EXPECT_TRUE(menu().isAskingAboutLid());
    EXPECT_FALSE(lid().enabled());
}

}  // namespace
}  // namespace corvane
