#include "tests/app/menu/MenuMachine.h"

namespace corvane {
namespace {

class MenuLogin : public MenuTest {
protected:
    bool isChoiceStored() { return machine.defaults.get<bool>("loginChoiceMade").value_or(false); }
};

TEST_F(MenuLogin, IsAskedForUntilAChoiceIsMade) {
    EXPECT_FALSE(menu().loginChoiceMade());
    EXPECT_FALSE(menu().loginOn());
    menu().answerLogin(true);
    EXPECT_TRUE(menu().loginOn());
    EXPECT_TRUE(machine.loginItem.isEnabled());
    EXPECT_TRUE(isChoiceStored());
    machine.openMenu();
    EXPECT_TRUE(menu().loginChoiceMade());
    EXPECT_TRUE(menu().loginOn());
}

TEST_F(MenuLogin, LetsItsSwitchBeSeenToMoveBeforeItGoes) {
    menu().answerLogin(true);
    machine.advance(449ms);
    EXPECT_FALSE(menu().loginChoiceMade());
    machine.advance(1ms);
    EXPECT_TRUE(menu().loginChoiceMade());
}

TEST_F(MenuLogin, MayBeAnsweredWithNo) {
    machine.loginItem.setEnabled(true);
    machine.openMenu();
    EXPECT_TRUE(menu().loginOn());
    menu().answerLogin(false);
    EXPECT_FALSE(menu().loginOn());
    EXPECT_FALSE(machine.loginItem.isEnabled());
    EXPECT_TRUE(isChoiceStored());
    machine.advance(1s);
    EXPECT_TRUE(menu().loginChoiceMade());
}

TEST_F(MenuLogin, CountsAsAnsweredWhenTheSystemRefuses) {
    machine.loginItem.breakDown();
    menu().answerLogin(true);
    machine.advance(1s);
    EXPECT_FALSE(machine.loginItem.isEnabled());
    EXPECT_TRUE(isChoiceStored());
    EXPECT_TRUE(menu().loginChoiceMade());
}

TEST_F(MenuLogin, IsCapturedAtItsStart) {
    machine.loginItem.setEnabled(true);
    machine.defaults.set("loginChoiceMade", true);
    menu().panelAppeared();
    EXPECT_FALSE(menu().loginOn());
    EXPECT_FALSE(menu().loginChoiceMade());
}

}  // namespace
}  // namespace corvane
