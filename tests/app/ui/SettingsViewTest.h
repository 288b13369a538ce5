#pragma once

#include <QAccessible>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <memory>
#include <string>

#include "app/settings/SettingsController.h"
#include "app/shell/WindowPresence.h"
#include "app/windows/QuickWindow.h"
#include "platform/simulated/SimulatedActivationPolicy.h"
#include "platform/simulated/SimulatedAppearance.h"
#include "tests/app/settings/SettingsMachine.h"
#include "tests/app/ui/QuickItems.h"

namespace corvane {

/// The settings window as the application opens it, off any screen. Set up the machine before `open`. Items
/// go by the names they have in the views, "general/showTemp".
class SettingsViewTest : public testing::Test {
protected:
    SettingsViewTest();

    void open();
    /// "de" or "en", stored before the window is opened.
    void speak(const char* language) { machine.defaults.set(Lang::setting, std::string(language)); }

    /// What happened is shown, and pop-ups have faded in or out.
    void settle();
    void advance(Duration duration) {
        machine.time.advance(duration);
        settle();
    }

    [[nodiscard]] QQuickView& view() { return window->view(); }
    [[nodiscard]] QQuickItem& item(const QString& path) { return itemAt(*view().contentItem(), path); }
    [[nodiscard]] bool isShown(const QString& path) { return isShownAt(*view().contentItem(), path); }
    [[nodiscard]] std::string text(const QString& path) {
        return item(path).property("text").toString().toStdString();
    }
    [[nodiscard]] std::string focused();

    /// A click of the user's in the middle of the item, which is scrolled to first.
    void click(const QString& path);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    [[nodiscard]] QAccessibleInterface& accessible(const QString& path);
    /// Of the item that is shown.
    [[nodiscard]] std::string heard(const QString& path) {
        return accessible(path).text(QAccessible::Name).toStdString();
    }

    void askToUninstall();
    /// Up to the password prompt.
    void beginRemoval();
    void endRemoval(InstallResult result);

    SettingsMachine machine;
    SimulatedAppearance look;
    SimulatedActivationPolicy policy;
    WindowPresence presence{policy};
    std::unique_ptr<SettingsController> controller;
    /// Of the window that was opened last.
    SettingsState* state = nullptr;
    QuickWindow* window = nullptr;
};

}  // namespace corvane
