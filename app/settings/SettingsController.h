#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "app/settings/SettingsState.h"
#include "app/shell/AppWindow.h"
#include "app/shell/WindowPresence.h"
#include "platform/Lifetime.h"

namespace corvane {

/// Makes a window that shows this state, which outlives it.
using SettingsWindowFactory =
    std::function<std::unique_ptr<AppWindow>(SettingsState& state, WindowClosed closed)>;

/// The settings window: there is one at most. Main loop.
///
/// A removal of the application goes on when the user closes the window meanwhile. What comes of it is told
/// in the window, which opens again for that.
class SettingsController {
public:
    /// `presence` outlives the controller.
    SettingsController(SettingsServices services, WindowPresence& presence, SettingsWindowFactory makeWindow);
    SettingsController(const SettingsController&) = delete;
    SettingsController& operator=(const SettingsController&) = delete;
    ~SettingsController();

    /// Opens the window, or brings the open one to the front.
    void show();

    [[nodiscard]] bool isOpen() const { return window_ != nullptr; }

private:
    void makeState();
    void openWindow();
    void forgetWindow();
    void followRemoval();

    SettingsServices services_;
    WindowPresence& presence_;
    SettingsWindowFactory makeWindow_;

    /// While there is a window, or a removal under way.
    std::unique_ptr<SettingsState> state_;
    std::unique_ptr<WindowPresence::OpenWindow> openWindow_;
    std::unique_ptr<AppWindow> window_;
    Lifetime lifetime_;
};

}  // namespace corvane
