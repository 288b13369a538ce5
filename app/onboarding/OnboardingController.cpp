#include "app/onboarding/OnboardingController.h"

#include <QObject>

#include "app/shell/ShellSettings.h"

namespace corvane {

bool OnboardingController::showIfFirstLaunch() {
    if (services_.defaults.get<std::string>(ShellSettings::seenIntroduction) == services_.version) {
        return false;
    }
    show();
    return true;
}

void OnboardingController::show() {
    if (showing_ == nullptr) {
        open();
    }
    services_.presence.activate();
    showing_->window->bringToFront();
}

void OnboardingController::close() {
    completedThisRun_ = false;
    finishTimer_.reset();
    showing_.reset();
}

void OnboardingController::retranslate() {
    if (showing_ != nullptr) {
        showing_->introduction.retranslate();
    }
}

void OnboardingController::open() {
    completedThisRun_ = false;
    showing_ = std::make_unique<Showing>(services_.lang, services_.presence);
    OnboardingState& introduction = showing_->introduction;
    QObject::connect(&introduction, &OnboardingState::finished, &introduction, [this] { finish(); });
    showing_->window = services_.makeWindow(introduction, [this] { windowClosed(); });
}

/// Its window may be the one that calls, so that it closes afterwards.
void OnboardingController::finish() {
    services_.defaults.set(ShellSettings::seenIntroduction, services_.version);
    completedThisRun_ = true;
    services_.mainLoop.async(showing_->lifetime.bound([this] { windowClosed(); }));
}

void OnboardingController::windowClosed() {
    showing_.reset();
    if (std::exchange(completedThisRun_, false) && onFinished_) {
        finishTimer_ = services_.mainLoop.after(finishDelay, onFinished_);
    }
}

}  // namespace corvane
