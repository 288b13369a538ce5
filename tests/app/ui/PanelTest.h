#pragma once

#include <QAccessible>
#include <QColor>
#include <QKeyEvent>
#include <QPoint>
#include <QQuickItem>
#include <QQuickView>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QVariant>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/ui/PanelMachine.h"
#include "tests/app/ui/QuickItems.h"

namespace corvane {

/// The panel, off any screen, on a Mac that can be set up before `open`. Items go by the names they have in
/// the views, "keepAwakeSection/switch".
class PanelTest : public testing::Test {
protected:
    PanelTest();

    void open(float celsius = 50) {
        machine.openPanel(celsius);
        show();
    }

    /// The Mac as it is, in a window that offers the panel so much height.
    void show(double availableHeight = 2000);

    /// What happened is shown.
    void settle() {
        machine.settle();
        renderAll(*window);
    }
    void advance(Duration duration) {
        machine.advance(duration);
        settle();
    }

    [[nodiscard]] QQuickItem& item(const QString& path) { return itemAt(*window->contentItem(), path); }
    [[nodiscard]] bool isShown(const QString& path) { return isShownAt(*window->contentItem(), path); }
    /// Every item of this name that is seen, from top to bottom.
    [[nodiscard]] std::vector<QQuickItem*> allShown(const QString& name);
    [[nodiscard]] std::string text(const QString& path) {
        return item(path).property("text").toString().toStdString();
    }
    [[nodiscard]] QColor colorOf(const QString& path) { return item(path).property("color").value<QColor>(); }
    /// What the views have under this name, "accent" or "roleTextColor('red')".
    [[nodiscard]] QColor themeColor(const QString& name);
    /// The item that has the keyboard.
    [[nodiscard]] QQuickItem* focused() const { return window->activeFocusItem(); }
    [[nodiscard]] bool isOn(const QString& path) { return item(path).property("isOn").toBool(); }

    /// A click of the user's in the middle of the item, which is scrolled to first.
    void click(const QString& path) { clickAt(item(path).boundingRect().center(), path); }
    /// At a place of the item.
    void clickAt(QPointF place, const QString& path);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window.get(), key, modifiers);
        settle();
    }
    /// Pop-ups fade in and out; what follows waits for it.
    void waitForPopups();

    /// What the views complain of while something is done.
    [[nodiscard]] static QStringList warningsOf(const std::function<void()>& action);

    void type(const char* letters) {
        for (const char letter : std::string(letters)) {
            QTest::keyClick(window.get(), letter);
        }
        settle();
    }

    SleepManager& manager() { return *machine.manager; }
    FanController& fan() { return machine.manager->fan(); }

    PanelMachine machine;
    std::unique_ptr<QQuickView> window;
};

}  // namespace corvane
