#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "app/windows/Views.h"
#include "tests/app/application/RecordingPopover.h"
#include "tests/app/application/RecordingWindow.h"

namespace corvane {

/// Views that nobody sees, and what was made of them. Outlives them.
class RecordingViews {
public:
    Views views() {
        return {.makePopover =
                    [this](const PanelModels& models) {
                        language = &models.lang;
                        auto made = std::make_unique<RecordingPopover>();
                        popover = made.get();
                        return made;
                    },
                .makeSettingsWindow =
                    [this](const WindowServices& /*services*/, SettingsState& state, WindowClosed closed) {
                        settings = &state;
                        return std::make_unique<RecordingWindow>(settingsWindow, std::move(closed));
                    },
                .makeOnboardingWindow =
                    [this](SerialQueue& /*mainLoop*/, const Lang& /*lang*/, OnboardingState& state,
                           WindowClosed closed) {
                        introduction = &state;
                        return std::make_unique<RecordingWindow>(introductionWindow, std::move(closed));
                    }};
    }

    // Null until they are made; the windows as long as they are open.
    RecordingPopover* popover = nullptr;
    RecordingWindow* settingsWindow = nullptr;
    RecordingWindow* introductionWindow = nullptr;
    // Of the last window; they live as long as it.
    SettingsState* settings = nullptr;
    OnboardingState* introduction = nullptr;
    const Lang* language = nullptr;
};

}  // namespace corvane
