#pragma once

#include <QAccessible>
#include <QByteArray>
#include <QQuickItem>
#include <QQuickView>
#include <QString>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/shell/Lang.h"
#include "app/ui/AppearanceState.h"
#include "app/ui/LanguageState.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedAppearance.h"
#include "platform/simulated/SimulatedLocale.h"
#include "tests/app/ui/QuickItems.h"

namespace corvane {

/// Controls in a window off any screen. The window's root is called `test`; what the controls ask for is
/// noted with `test.ask(value)`.
class ControlTest : public testing::Test {
protected:
    ControlTest();

    /// Shows items written in QML, which may follow `test.state1` and `test.state2`. English and light unless
    /// it was said otherwise.
    void load(const std::string& items, const QVariant& state1 = {});
    void speakGerman();

    [[nodiscard]] QQuickItem& item(const QString& path) { return itemAt(*window->contentItem(), path); }
    [[nodiscard]] bool isShown(const QString& path) { return isShownAt(*window->contentItem(), path); }
    [[nodiscard]] QVariant property(const char* name) { return window->rootObject()->property(name); }
    void setProperty(const char* name, const QVariant& value);
    /// What was asked for, as text, since the last time.
    std::vector<std::string> asked();

    void click(const QString& path);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The name of the item that has the keyboard.
    [[nodiscard]] std::string focused();
    /// As Tab gives it.
    void focus(const QString& path);

    [[nodiscard]] QAccessibleInterface& accessible(const QString& path);
    [[nodiscard]] std::string accessibleName(const QString& path);
    /// Does what a screen reader's user asks of the item.
    void doAccessibly(const QString& path, const QString& action);
    void setAccessibly(const QString& path, double value);

    /// What the window shows.
    [[nodiscard]] QImage picture();

    SimulatedAppearance look;
    std::unique_ptr<QQuickView> window;

private:
    MemoryUserDefaults defaults_;
    SimulatedLocale locale_;
    Lang lang_{defaults_, locale_};
    LanguageState language_{lang_};
    AppearanceState appearance_{look};
};

}  // namespace corvane
