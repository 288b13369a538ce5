#include <fmt/format.h>

#include "tests/app/ui/ControlTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;

/// What is true of everything that is clicked to do something.
struct Button {
    const char* name;
    const char* qml;
};

class EveryButton : public ControlTest, public testing::WithParamInterface<Button> {
protected:
    void SetUp() override {
        load(fmt::format(
            "{} {{ objectName: 'button'; x: 20; y: 20; width: 300; symbol: 'gearshape'; text: 'Settings';"
            " onClicked: test.ask('clicked') }}",
            GetParam().qml));
    }
};

TEST_P(EveryButton, IsClickedWithTheMouse) {
    click("button");
    EXPECT_THAT(asked(), ElementsAre("clicked"));
}

TEST_P(EveryButton, IsReachedWithTabAndClickedWithTheSpaceBar) {
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "button");
    press(Qt::Key_Space);
    EXPECT_THAT(asked(), ElementsAre("clicked"));
}

TEST_P(EveryButton, ShowsThatTheKeyboardIsThere) {
    const QImage before = picture();
    focus("button");
    EXPECT_NE(picture(), before);
}

TEST_P(EveryButton, TellsAScreenReaderItsNameAndIsPressedThroughIt) {
    EXPECT_EQ(accessible("button").role(), QAccessible::Button);
    EXPECT_EQ(accessibleName("button"), "Settings");
    doAccessibly("button", QAccessibleActionInterface::pressAction());
    EXPECT_THAT(asked(), ElementsAre("clicked"));
}

INSTANTIATE_TEST_SUITE_P(Buttons, EveryButton,
                         testing::Values(Button{"Panel", "PanelButton"}, Button{"Icon", "IconButton"},
                                         Button{"Banner", "BannerButton"}),
                         [](const auto& instance) { return instance.param.name; });

using PanelButtonTest = ControlTest;

TEST_F(PanelButtonTest, WrapsATextThatIsTooLongForIt) {
    load(
        "PanelButton { objectName: 'button'; width: 120; text: 'A text that is much too long for one line' "
        "}");
    EXPECT_GT(item("button").implicitHeight(), 40);
}

TEST_F(PanelButtonTest, LooksDifferentInEachKind) {
    load(
        "Column { PanelButton { objectName: 'a'; text: 'Text' }"
        " PanelButton { objectName: 'b'; text: 'Text'; kind: 'tinted' }"
        " PanelButton { objectName: 'c'; text: 'Text'; kind: 'filled' } }");
    const QImage all = picture();
    const auto colorOf = [&](const char* name) {
        return all.pixel(item(name).mapToScene(QPointF(10, 4)).toPoint());
    };
    EXPECT_NE(colorOf("a"), colorOf("b"));
    EXPECT_NE(colorOf("b"), colorOf("c"));
}

using BannerTest = ControlTest;

TEST_F(BannerTest, IsHeardAsItsText) {
    load("Banner { objectName: 'banner'; width: 300; emoji: '🔥'; text: 'Too hot'; role: 'orange' }");
    EXPECT_EQ(accessible("banner").role(), QAccessible::StaticText);
    EXPECT_EQ(accessibleName("banner"), "Too hot");
}

TEST_F(BannerTest, IsTintedInItsRolesColor) {
    load("Banner { objectName: 'banner'; width: 300; text: 'Too hot'; role: 'red'; tintOpacity: 1 }");
    const QColor tint = picture().pixelColor(10, 4);
    EXPECT_GT(tint.red(), 2 * tint.green());
}

}  // namespace
}  // namespace corvane
