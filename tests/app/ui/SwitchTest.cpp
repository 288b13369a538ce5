#include "tests/app/ui/ControlTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PanelSwitchTest : public ControlTest {
protected:
    void loadSwitch(const std::string& more = "") {
        load(
            "PanelSwitch { objectName: 'switch'; accessibleName: 'Fans'; isOn: test.state1 === true;"
            " onSetOn: on => test.ask(on);" +
            more + " }");
    }
};

TEST_F(PanelSwitchTest, AsksForTheOtherStateAndKeepsShowingWhatIsSo) {
    loadSwitch();
    click("switch");
    click("switch");
    EXPECT_THAT(asked(), ElementsAre("true", "true"));
    EXPECT_FALSE(item("switch").property("isOn").toBool());

    setProperty("state1", true);
    EXPECT_TRUE(item("switch").property("isOn").toBool());
    click("switch");
    EXPECT_THAT(asked(), ElementsAre("false"));
}

TEST_F(PanelSwitchTest, IsThrownWithTheSpaceBar) {
    loadSwitch();
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "switch");
    press(Qt::Key_Space);
    EXPECT_THAT(asked(), ElementsAre("true"));
}

TEST_F(PanelSwitchTest, AsksForNothingWhileItIsDisabled) {
    loadSwitch("enabled: false");
    click("switch");
    EXPECT_THAT(asked(), IsEmpty());
    EXPECT_LT(item("switch").opacity(), 1);
}

TEST_F(PanelSwitchTest, TellsAScreenReaderWhatItIsAndHowItStands) {
    loadSwitch();
    EXPECT_EQ(accessible("switch").role(), QAccessible::CheckBox);
    EXPECT_EQ(accessibleName("switch"), "Fans");
    EXPECT_TRUE(accessible("switch").state().checkable);
    EXPECT_FALSE(accessible("switch").state().checked);
    setProperty("state1", true);
    EXPECT_TRUE(accessible("switch").state().checked);
}

TEST_F(PanelSwitchTest, IsThrownThroughAScreenReader) {
    loadSwitch();
    doAccessibly("switch", QAccessibleActionInterface::toggleAction());
    EXPECT_THAT(asked(), ElementsAre("true"));
    doAccessibly("switch", QAccessibleActionInterface::pressAction());
    EXPECT_THAT(asked(), ElementsAre("true"));
}

TEST_F(PanelSwitchTest, ShowsThatTheKeyboardIsThere) {
    loadSwitch("x: 20; y: 20");
    const QImage before = picture();
    focus("switch");
    EXPECT_NE(picture(), before);
}

}  // namespace
}  // namespace corvane
