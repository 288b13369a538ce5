#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "app/onboarding/OnboardingState.h"
#include "app/shell/AppWindow.h"
#include "app/shell/Lang.h"
#include "app/shell/WindowPresence.h"
#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"
#include "platform/UserDefaults.h"

namespace corvane {

/// Makes the window that shows this introduction, which outlives it.
using OnboardingWindowFactory =
    std::function<std::unique_ptr<AppWindow>(OnboardingState& introduction, WindowClosed closed)>;

/// What the introduction needs. The references outlive its controller.
struct OnboardingServices {
    SerialQueue& mainLoop;
    UserDefaults& defaults;
    const Lang& lang;
    WindowPresence& presence;
    OnboardingWindowFactory makeWindow;
    /// The application's, as users know it.
    std::string version = "?";
};

/// Shows the introduction, once by itself for each version of the application. Belongs to the main loop.
class OnboardingController {
public:
    /// From the closing of a finished introduction to what follows it.
    static constexpr Duration finishDelay = std::chrono::milliseconds(350);

    explicit OnboardingController(OnboardingServices services) : services_(std::move(services)) {}
    OnboardingController(const OnboardingController&) = delete;
    OnboardingController& operator=(const OnboardingController&) = delete;
    /// Takes an open introduction off the screen; nothing follows it.
    ~OnboardingController() = default;

    /// Runs on the main loop, `finishDelay` after the window of a finished introduction has closed.
    void setOnFinished(std::function<void()> onFinished) { onFinished_ = std::move(onFinished); }

    /// Shows the introduction unless that of this version was seen to its end. Returns whether it was shown.
    bool showIfFirstLaunch();

    /// Shows it from its first page, or brings it to the front if it is open.
    void show();

    /// Takes an open introduction off the screen; nothing follows it. Not within its window's own calls.
    void close();

    /// The language has changed: an open introduction follows.
    void retranslate();

private:
    /// An introduction on the screen. Members in the order in which they need each other.
    struct Showing {
        Showing(const Lang& lang, WindowPresence& windows) : introduction(lang), presence(windows.opened()) {}

        OnboardingState introduction;
        std::unique_ptr<WindowPresence::OpenWindow> presence;
        std::unique_ptr<AppWindow> window;
        Lifetime lifetime;
    };

    void open();
    void finish();
    void windowClosed();

    OnboardingServices services_;
    std::function<void()> onFinished_;
    std::unique_ptr<Showing> showing_;
    /// The open introduction was seen to its end, and is about to close.
    bool completedThisRun_ = false;
    std::unique_ptr<Timer> finishTimer_;
};

}  // namespace corvane
