#pragma once

#include <functional>
#include <memory>

namespace corvane {

/// One of the application's windows with a title bar, on the screen as long as it exists. Main loop.
class AppWindow {
public:
    AppWindow() = default;
    AppWindow(const AppWindow&) = delete;
    AppWindow& operator=(const AppWindow&) = delete;
    /// Takes it off the screen without a word.
    virtual ~AppWindow() = default;

    /// Brings it before all other windows and gives it the keyboard.
    virtual void bringToFront() = 0;
};

/// Makes a window, centred on the screen. `closed` runs on the main loop, never inside another call of the
/// window, once the user has closed it; whoever holds the window destroys it then.
using AppWindowFactory = std::function<std::unique_ptr<AppWindow>(std::function<void()> closed)>;

}  // namespace corvane
