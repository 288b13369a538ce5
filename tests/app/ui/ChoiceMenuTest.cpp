#include "tests/app/ui/ControlTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ChoiceMenuTest : public ControlTest {
protected:
    ChoiceMenuTest() {
        load(
            "ChoiceMenu { objectName: 'menu'; text: 'Add drive…'; symbol: 'plus.circle'; x: 20; y: 20;"
            " items: [{label: 'Backup', value: 'a'}, {label: 'Media', value: 'b'}]; value: test.state1;"
            " onChosen: value => test.ask(value); onOpening: test.ask('opening') }",
            "b");
    }

    std::vector<QQuickItem*> lines() {
        std::vector<QQuickItem*> lines;
        forEachShown(*window->contentItem(), [&](QQuickItem& each) {
            if (each.inherits("QQuickMenuItem")) {
                lines.push_back(&each);
            }
        });
        return lines;
    }
    void openMenu() {
        click("menu");
        ASSERT_THAT(asked(), ElementsAre("opening"));
        ASSERT_EQ(lines().size(), 2U);
    }
};

TEST_F(ChoiceMenuTest, ShowsNoLinesBeforeItIsOpened) {
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(ChoiceMenuTest, OpensWithAClickAndTellsWhichLineWasClicked) {
    openMenu();
    lines()[0]->setObjectName("line");
    click("line");
    EXPECT_THAT(asked(), ElementsAre("a"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return lines().empty(); }));
}

TEST_F(ChoiceMenuTest, IsWalkedThroughWithTheArrowKeys) {
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "menu");
    press(Qt::Key_Down);
    EXPECT_THAT(asked(), ElementsAre("opening"));
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_THAT(asked(), ElementsAre("b"));
}

TEST_F(ChoiceMenuTest, IsClosedWithEscapeAndChoosesNothing) {
    openMenu();
    press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return lines().empty(); }));
    EXPECT_THAT(asked(), IsEmpty());
}

TEST_F(ChoiceMenuTest, ChecksTheLineOfTheValue) {
    openMenu();
    EXPECT_FALSE(lines()[0]->property("isChosen").toBool());
    EXPECT_TRUE(lines()[1]->property("isChosen").toBool());
}

TEST_F(ChoiceMenuTest, IsHeardAsAMenuOfNamedLines) {
    EXPECT_EQ(accessible("menu").role(), QAccessible::Button);
    EXPECT_EQ(accessibleName("menu"), "Add drive…");
    doAccessibly("menu", QAccessibleActionInterface::pressAction());
    ASSERT_EQ(lines().size(), 2U);
    lines()[0]->setObjectName("line");
    EXPECT_EQ(accessible("line").role(), QAccessible::MenuItem);
    EXPECT_EQ(accessibleName("line"), "Backup");
}

}  // namespace
}  // namespace corvane
