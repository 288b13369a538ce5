#include <QCloseEvent>
#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <QTest>
#include <QWindow>
#include <functional>
#include <optional>

#include <gtest/gtest.h>

#include "app/popover/QuickPopover.h"
#include "app/popover/popoverPosition.h"
#include "tests/app/ui/GuiApplication.h"
#include "tests/app/ui/PanelMachine.h"
#include "tests/app/ui/QuickItems.h"

namespace corvane {
namespace {

using std::chrono::milliseconds;

/// The panel in its window, on a screen that nobody sees.
class QuickPopoverTest : public testing::Test {
protected:
    QuickPopoverTest() {
        needGuiApplication();
        machine.speak("en");
        machine.openPanel();
        popover.emplace(PanelModels{.mainLoop = machine.mainLoop,
                                    .manager = *machine.manager,
                                    .menu = *machine.menu,
                                    .header = *machine.header,
                                    .temperature = *machine.temperature,
                                    .applications = machine.installed,
                                    .appearance = machine.look,
                                    .lang = machine.lang,
                                    .locale = machine.locale});
    }

    void show(std::optional<QPoint> anchor = QPoint(400, 10)) {
        popover->show(anchor);
        settle();
    }
    void settle() {
        machine.settle();
        renderAll(window());
    }

    void clickElsewhere() { QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, QPoint(-40, 30)); }
    void clickOn(const char* path) {
        const QQuickItem& target = item(path);
        QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier,
                          target.mapToScene(target.boundingRect().center()).toPoint());
        settle();
    }

    /// The user switches the closed-lid mode on for the first time.
    void beAskedAboutTheLid() {
        machine.menu->toggleClosedLid(true);
        settle();
        ASSERT_TRUE(QTest::qWaitFor([this] { return item("alertAccept").hasActiveFocus(); }));
    }
    /// The question is seen and takes the mouse and the keyboard.
    void expectQuestionAboutTheLid() {
        ASSERT_TRUE(isShownAt(*window().contentItem(), "alertAccept"));
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
        EXPECT_TRUE(item("alertAccept").hasActiveFocus());
        QTest::keyClick(&window(), Qt::Key_Tab);
        EXPECT_TRUE(item("alertReject").hasActiveFocus());
        QTest::keyClick(&window(), Qt::Key_Backtab);
        EXPECT_TRUE(item("alertAccept").hasActiveFocus());
    }
    bool isLidQuestionShown() {
        settle();
        return isShownAt(*window().contentItem(), "alertAccept");
    }

    bool isMenuShown() {
        bool isShown = false;
        forEachShown(*window().contentItem(),
                     [&isShown](const QQuickItem& each) { isShown |= each.inherits("QQuickMenuItem"); });
        return isShown;
    }

    /// To a window that is gone again at once.
    void loseKeyboard() {
        QWindow other;
        other.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    }

    PopoverWindow& window() { return *popover->window(); }
    QQuickItem& item(const char* path) { return itemAt(*window().contentItem(), path); }
    static QRect screen() { return QGuiApplication::primaryScreen()->availableGeometry(); }

    PanelMachine machine;
    std::optional<QuickPopover> popover;
};

TEST_F(QuickPopoverTest, IsNotLoadedBeforeItIsOpened) {
    EXPECT_FALSE(popover->isShown());
    EXPECT_EQ(popover->window(), nullptr);
    popover->close();
    EXPECT_FALSE(popover->wasClosedByThisClick(QPoint(400, 10)));
}

TEST_F(QuickPopoverTest, OpensWhereItWasClickedInTheSizeOfItsContent) {
    show(QPoint(400, 10));
    EXPECT_TRUE(popover->isShown());
    EXPECT_EQ(window().width(), qCeil(window().rootObject()->implicitWidth()));
    EXPECT_EQ(window().position(), popoverPosition(window().size(), QPoint(400, 10), screen()));
}

TEST_F(QuickPopoverTest, MovesWhenItIsOpenedSomewhereElse) {
    show(QPoint(400, 10));
    show(std::nullopt);
    EXPECT_EQ(window().position(), popoverPosition(window().size(), std::nullopt, screen()));
}

TEST_F(QuickPopoverTest, GrowsWithItsContentButNotBeyondTheScreen) {
    show();
    const int before = window().height();
    machine.menu->setExpandAuto(true);
    settle();
    EXPECT_GT(window().height(), before);
    for (const auto expand : {&MenuState::setExpandAwake, &MenuState::setExpandLid,
                              &MenuState::setExpandDrives, &MenuState::setExpandFans}) {
        ((*machine.menu).*expand)(true);
    }
    machine.manager->fan().setFansEnabled(true);
    settle();
    EXPECT_LE(window().height(), screen().height() - 2 * popoverMargin);
    EXPECT_TRUE(screen().contains(window().geometry()));
}

TEST_F(QuickPopoverTest, IsClosedByAClickElsewhere) {
    show();
    clickElsewhere();
    EXPECT_FALSE(popover->isShown());
}

TEST_F(QuickPopoverTest, StaysOpenForAClickOnIt) {
    show();
    QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    EXPECT_TRUE(popover->isShown());
}

TEST_F(QuickPopoverTest, IsClosedByEscape) {
    show();
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_FALSE(popover->isShown());
}

TEST_F(QuickPopoverTest, IsClosedWhenItLosesTheKeyboard) {
    show();
    loseKeyboard();
    EXPECT_FALSE(popover->isShown());
}

TEST_F(QuickPopoverTest, IsOnlyClosedWhenTheWindowManagerWantsItGone) {
    show();
    QCloseEvent gone;
    QCoreApplication::sendEvent(&window(), &gone);
    EXPECT_FALSE(popover->isShown());
    show();
    EXPECT_TRUE(popover->isShown());
}

TEST_F(QuickPopoverTest, KnowsTheClickThatTookItsKeyboardForAMoment) {
    show();
    loseKeyboard();
    EXPECT_TRUE(popover->wasClosedByThisClick(QPoint(400, 10)));
    machine.advance(milliseconds(299));
    EXPECT_TRUE(popover->wasClosedByThisClick(QPoint(400, 10)));
    machine.advance(milliseconds(1));
    EXPECT_FALSE(popover->wasClosedByThisClick(QPoint(400, 10)));
    show();
    EXPECT_FALSE(popover->wasClosedByThisClick(QPoint(400, 10)));
}

TEST_F(QuickPopoverTest, KnowsTheClickOnTheStatusItemThatWasAClickElsewhereToIt) {
    show();
    const QPoint pressed = window().mapToGlobal(QPoint(-40, 30));
    clickElsewhere();
    EXPECT_TRUE(popover->wasClosedByThisClick(pressed + QPoint(10, -12)));
    EXPECT_TRUE(popover->wasClosedByThisClick(std::nullopt)) << "a tray that does not tell where";
    EXPECT_FALSE(popover->wasClosedByThisClick(pressed + QPoint(200, 0))) << "the item is not there";
    machine.advance(milliseconds(300));
    EXPECT_FALSE(popover->wasClosedByThisClick(pressed));
}

TEST_F(QuickPopoverTest, IsNotClosedByAClickWhenItIsClosedOtherwise) {
    show();
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_FALSE(popover->wasClosedByThisClick(std::nullopt));
}

TEST_F(QuickPopoverTest, OpensTheSectionsInUseEachTimeItAppears) {
    show();
    EXPECT_FALSE(machine.menu->expandAuto());
    popover->close();
    machine.manager->triggers().setAutomationEnabled(true);
    show();
    EXPECT_TRUE(machine.menu->expandAuto());
}

TEST_F(QuickPopoverTest, KeepsWhatTheUserWasAboutToChooseWhileItIsClosed) {
    show();
    const QDateTime chosen = machine.menu->customDate().addDays(1);
    machine.menu->setCustomDate(chosen);
    popover->close();
    show();
    EXPECT_EQ(machine.menu->customDate(), chosen);
}

TEST_F(QuickPopoverTest, TakesWhatLiesOpenOverItAlongWhenItIsClosed) {
    machine.menu->setExpandAuto(true);
    machine.manager->triggers().setAutomationEnabled(true);
    show();
    QObject& picker = *window().rootObject()->findChild<QObject*>("applicationPicker");
    for (const auto& leave :
         {std::function<void()>([&] { loseKeyboard(); }), std::function<void()>([&] { popover->close(); }),
          std::function<void()>([&] { clickElsewhere(); })}) {
        QMetaObject::invokeMethod(&picker, "open");
        settle();
        ASSERT_TRUE(picker.property("visible").toBool());
        leave();
        EXPECT_FALSE(picker.property("visible").toBool());
        show();
        EXPECT_FALSE(picker.property("visible").toBool());
        EXPECT_TRUE(popover->isShown());
    }
}

TEST_F(QuickPopoverTest, TakesAMenuAlongWhenTheUserClicksElsewhere) {
    machine.attach("Backup");
    machine.manager->drives().setEnabled(true);
    show();
    clickOn("addDrive");
    ASSERT_TRUE(isMenuShown());
    clickElsewhere();
    EXPECT_FALSE(popover->isShown());
    show();
    EXPECT_FALSE(isMenuShown());
}

TEST_F(QuickPopoverTest, IsClosedByAClickElsewhereWhileAQuestionIsOpen) {
    show();
    beAskedAboutTheLid();
    clickElsewhere();
    EXPECT_FALSE(popover->isShown());
    EXPECT_TRUE(popover->wasClosedByThisClick(std::nullopt));
}

TEST_F(QuickPopoverTest, StaysOpenForAClickBesideTheQuestion) {
    show();
    beAskedAboutTheLid();
    QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    EXPECT_TRUE(popover->isShown());
    EXPECT_TRUE(isLidQuestionShown());
}

TEST_F(QuickPopoverTest, AsksAgainWhatWasNotAnsweredWhenItWasClosed) {
    show();
    beAskedAboutTheLid();
    for (const auto& leave :
         {std::function<void()>([&] { loseKeyboard(); }), std::function<void()>([&] { popover->close(); }),
          std::function<void()>([&] { clickElsewhere(); })}) {
        leave();
        ASSERT_FALSE(popover->isShown());
        EXPECT_FALSE(machine.manager->lid().enabled());
        show();
        expectQuestionAboutTheLid();
    }
    clickOn("alertAccept");
    EXPECT_TRUE(machine.manager->lid().enabled());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !isLidQuestionShown(); }));
}

TEST_F(QuickPopoverTest, CanBeToldNoAfterItWasClosedOverAQuestion) {
    show();
    beAskedAboutTheLid();
    loseKeyboard();
    show();
    expectQuestionAboutTheLid();
    clickOn("alertReject");
    EXPECT_FALSE(machine.manager->lid().enabled());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !isLidQuestionShown(); }));
    popover->close();
    show();
    EXPECT_FALSE(isLidQuestionShown());
    clickOn("closedLidSection/switch");
    EXPECT_TRUE(isLidQuestionShown()) << "the next time";
}

TEST_F(QuickPopoverTest, SpeaksTheLanguageThatWasChosenSinceItWasLastOpen) {
    show();
    EXPECT_EQ(item("statusLabel").property("text").toString(), "Inactive");
    popover->close();
    machine.defaults.set(Lang::setting, std::string("de"));
    show();
    EXPECT_EQ(item("statusLabel").property("text").toString(), "Inaktiv");
}

TEST_F(QuickPopoverTest, FollowsTheLanguageWhileItIsOpenOnceItIsTold) {
    show();
    machine.defaults.set(Lang::setting, std::string("de"));
    popover->retranslate();
    EXPECT_EQ(item("statusLabel").property("text").toString(), "Inaktiv");
}

TEST_F(QuickPopoverTest, FollowsTheAppearanceWhileItIsOpen) {
    show();
    const QColor light = window().grabWindow().pixelColor(40, window().height() / 2);
    machine.look.setDark(true);
    settle();
    const QColor dark = window().grabWindow().pixelColor(40, window().height() / 2);
    EXPECT_GT(light.lightness(), dark.lightness() + 100);
}

}  // namespace
}  // namespace corvane
