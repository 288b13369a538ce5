#include "tests/app/ui/SettingsViewTest.h"

#include <QQmlError>
#include <stdexcept>
#include <utility>

#include "app/windows/makeSettingsWindow.h"
#include "tests/app/ui/GuiApplication.h"

namespace corvane {

SettingsViewTest::SettingsViewTest() {
    needGuiApplication();
    speak("en");
}

void SettingsViewTest::open() {
    controller = std::make_unique<SettingsController>(
        machine.services(), presence, [this](SettingsState& shown, std::function<void()> closed) {
            auto made = makeSettingsWindow({machine.mainLoop, look, machine.lang}, shown, std::move(closed));
            window = made.get();
            state = &shown;
            return made;
        });
    controller->show();
    for (const QQmlError& error : view().errors()) {
        ADD_FAILURE() << error.toString().toStdString();
    }
    ASSERT_NE(view().rootObject(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view()));
    settle();
}

void SettingsViewTest::settle() {
    machine.time.settle();
    const auto popupsAreStill = [this] {
        bool still = true;
        forEachShown(*view().contentItem(), [&](QQuickItem& parent) {
            for (const QObject* child : parent.children()) {
                if (child->inherits("QQuickPopup")) {
                    still = still && child->property("visible") == child->property("opened");
                }
            }
        });
        return still;
    };
    EXPECT_TRUE(QTest::qWaitFor(popupsAreStill));
    renderAll(view());
}

std::string SettingsViewTest::focused() {
    const QQuickItem* at = view().activeFocusItem();
    for (const QQuickItem* each = at; each != nullptr; each = each->parentItem()) {
        if (!each->objectName().isEmpty() && each->objectName() != "switch") {
            return each->objectName().toStdString();
        }
    }
    return "";
}

void SettingsViewTest::click(const QString& path) {
    QQuickItem& target = item(path);
    ASSERT_TRUE(target.isVisible()) << path.toStdString();
    QQuickItem& area = item("scrollArea");
    if (area.isAncestorOf(&target)) {
        QMetaObject::invokeMethod(&area, "reveal", Q_ARG(QQuickItem*, &target));
    }
    QTest::mouseClick(&view(), Qt::LeftButton, Qt::NoModifier,
                      target.mapToScene(target.boundingRect().center()).toPoint());
    settle();
}

void SettingsViewTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&view(), key, modifiers);
    settle();
}

QAccessibleInterface& SettingsViewTest::accessible(const QString& path) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&item(path));
    if (interface == nullptr) {
        throw std::runtime_error("nothing to hear of " + path.toStdString());
    }
    return *interface;
}

void SettingsViewTest::askToUninstall() {
    click("uninstall");
}

void SettingsViewTest::beginRemoval() {
    askToUninstall();
    click("alertAccept");
}

void SettingsViewTest::endRemoval(InstallResult result) {
    machine.uninstaller.finish(std::move(result));
    settle();
}

}  // namespace corvane
