// The settings window as the application opens it, on a screen that nobody sees.

#include <QPointer>
#include <chrono>

#include "app/windows/makeSettingsWindow.h"
#include "tests/app/ui/SettingsViewTest.h"

namespace corvane {
namespace {

class SettingsWindow : public SettingsViewTest {
protected:
    void expectClosed(const QPointer<QQuickView>& shown) {
        machine.time.settle();
        EXPECT_FALSE(controller->isOpen());
        EXPECT_TRUE(shown.isNull());
        EXPECT_EQ(policy.presence(), ActivationPolicy::Presence::accessory);
    }
};

TEST_F(SettingsWindow, HasOneSizeAndACloseButtonInItsTitleBar) {
    open();
    EXPECT_EQ(view().size(), QSize(380, 540));
    EXPECT_EQ(view().minimumSize(), view().size());
    EXPECT_EQ(view().maximumSize(), view().size());
    EXPECT_TRUE(view().flags() & Qt::WindowTitleHint);
    EXPECT_FALSE(view().flags() & Qt::FramelessWindowHint);
    EXPECT_TRUE(view().flags() & Qt::WindowCloseButtonHint);
    EXPECT_FALSE(view().flags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
}

TEST_F(SettingsWindow, IsDestroyedOnceTheUserHasClosedIt) {
    open();
    const QPointer<QQuickView> shown(&view());
    view().close();
    EXPECT_TRUE(controller->isOpen()) << "not inside the window's own calls";
    expectClosed(shown);
}

TEST_F(SettingsWindow, IsClosedWithTheKeysForIt) {
    open();
    const QPointer<QQuickView> shown(&view());
    QTest::keyClick(&view(), Qt::Key_W, Qt::ControlModifier);
    expectClosed(shown);
}

TEST_F(SettingsWindow, IsThereOnce) {
    open();
    const QPointer<QQuickView> shown(&view());
    controller->show();
    EXPECT_EQ(&view(), shown.data());
    EXPECT_TRUE(view().isVisible());
}

TEST_F(SettingsWindow, OpensAgain) {
    open();
    view().close();
    machine.time.settle();
    controller->show();
    settle();
    EXPECT_TRUE(controller->isOpen());
    EXPECT_TRUE(view().isVisible());
    EXPECT_EQ(text("version"), "v1.9");
}

TEST_F(SettingsWindow, OpensAgainToSayGoodbye) {
    open();
    beginRemoval();
    view().close();
    machine.time.settle();
    EXPECT_FALSE(controller->isOpen());
    machine.uninstaller.finish(InstallResult::success());
    settle();
    EXPECT_TRUE(controller->isOpen());
    click("alertAccept");
    EXPECT_EQ(machine.quits, 1);
}

TEST_F(SettingsWindow, WorksBesideAnotherWindow) {
    open();
    SettingsState otherState(machine.services());
    int timesClosed = 0;
    auto other =
        makeSettingsWindow({machine.mainLoop, look, machine.lang}, otherState, [&] { ++timesClosed; });
    other->bringToFront();
    renderAll(other->view());
    other->view().close();
    machine.time.settle();
    EXPECT_EQ(timesClosed, 1);
    other.reset();
    machine.time.settle();
    EXPECT_EQ(timesClosed, 1);
    EXPECT_TRUE(controller->isOpen());
    click("launchAtLogin/switch");
    EXPECT_TRUE(machine.loginItem.isEnabled());
}

TEST_F(SettingsWindow, GoesWithoutAWordWhenItsOwnerGoes) {
    open();
    const QPointer<QQuickView> shown(&view());
    view().close();
    controller.reset();
    machine.time.settle();
    EXPECT_TRUE(shown.isNull());
}

}  // namespace
}  // namespace corvane
