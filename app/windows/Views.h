#pragma once

#include <functional>
#include <memory>

#include "app/onboarding/OnboardingState.h"
#include "app/popover/PanelModels.h"
#include "app/popover/Popover.h"
#include "app/settings/SettingsState.h"
#include "app/shell/AppWindow.h"
#include "app/windows/WindowServices.h"

namespace corvane {

/// Makes all that the user sees of the application apart from its status item. What is passed by reference
/// outlives what is made. Main loop.
struct Views {
    std::function<std::unique_ptr<Popover>(const PanelModels& models)> makePopover;
    std::function<std::unique_ptr<AppWindow>(const WindowServices& services, SettingsState& settings,
                                             WindowClosed closed)>
        makeSettingsWindow;
    std::function<std::unique_ptr<AppWindow>(SerialQueue& mainLoop, const Lang& lang,
                                             OnboardingState& introduction, WindowClosed closed)>
        makeOnboardingWindow;
};

}  // namespace corvane
