#include "app/settings/SettingsController.h"

#include <utility>

namespace corvane {

SettingsController::SettingsController(SettingsServices services, WindowPresence& presence,
                                       SettingsWindowFactory makeWindow)
    : services_(std::move(services)), presence_(presence), makeWindow_(std::move(makeWindow)) {}

SettingsController::~SettingsController() = default;

void SettingsController::show() {
    if (!state_) {
        makeState();
    }
    if (!window_) {
        openWindow();
    }
    presence_.activate();
    window_->bringToFront();
}

void SettingsController::makeState() {
    state_ = std::make_unique<SettingsState>(services_);
    // Outside of the state's own calls, because it may be destroyed then.
    QObject::connect(state_.get(), &SettingsState::removalEnded, state_.get(),
                     [this] { services_.mainLoop.async(lifetime_.bound([this] { followRemoval(); })); });
}

void SettingsController::openWindow() {
    window_ = makeWindow_(*state_, lifetime_.bound([this] { forgetWindow(); }));
    openWindow_ = presence_.opened();
}

void SettingsController::forgetWindow() {
    window_.reset();
    openWindow_.reset();
    state_->windowClosed();
    if (!state_->isRemoving()) {
        state_.reset();
    }
}

/// The user may have closed the window meanwhile.
void SettingsController::followRemoval() {
    if (!state_ || window_) {
        return;
    }
    if (state_->alert() == SettingsState::Alert::none) {
        state_.reset();
    } else {
        show();
    }
}

}  // namespace corvane
