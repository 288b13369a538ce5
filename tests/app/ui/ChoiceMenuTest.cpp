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
            " items: test.state2 ?? [{label: 'Backup', value: 'a'}, {label: 'Media', value: 'b'}];"
            " value: test.state1; onChosen: value => test.ask(value);"
            " onOpening: { test.ask('opening'); if (test.state1 === 'gone') test.state2 = []; } }",
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
    /// What a screen reader takes for the open menu.
    QAccessibleInterface* openPopup() {
        QAccessibleInterface* view = QAccessible::queryAccessibleInterface(window.get());
        for (int index = 0; index < view->childCount(); ++index) {
            if (view->child(index)->role() == QAccessible::PopupMenu) {
                return view->child(index);
            }
        }
        return nullptr;
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
    QAccessibleInterface* popup = openPopup();
    ASSERT_NE(popup, nullptr);
    EXPECT_EQ(popup->text(QAccessible::Name), "Add drive…");
}

TEST_F(ChoiceMenuTest, IsDisabledWhileThereIsNothingToChoose) {
    setProperty("state2", QVariantList{});
    EXPECT_FALSE(item("menu").isEnabled());
    click("menu");
    press(Qt::Key_Tab);
    press(Qt::Key_Down);
    EXPECT_THAT(asked(), IsEmpty());
    EXPECT_THAT(lines(), IsEmpty());
    setProperty("state2", QVariant());
    EXPECT_TRUE(item("menu").isEnabled());
}

TEST_F(ChoiceMenuTest, StaysClosedWhenWhatThereWasToChooseIsGone) {
    setProperty("state1", "gone");
    click("menu");
    EXPECT_THAT(asked(), ElementsAre("opening"));
    EXPECT_THAT(lines(), IsEmpty());
}

}  // namespace
}  // namespace corvane
