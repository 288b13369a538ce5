#pragma once

#include <functional>

namespace corvane {

/// One of the application's windows besides the panel. Main loop.
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

/// Runs on the main loop, never inside another call of the window, once the user has closed it; whoever holds
/// the window destroys it then.
using WindowClosed = std::function<void()>;

}  // namespace corvane
