#include "app/windows/quickViews.h"

#include <utility>

#include "app/popover/QuickPopover.h"
#include "app/windows/makeOnboardingWindow.h"
#include "app/windows/makeSettingsWindow.h"

namespace corvane {

Views quickViews() {
    return {.makePopover = [](const PanelModels& models) { return std::make_unique<QuickPopover>(models); },
            .makeSettingsWindow = makeSettingsWindow,
            .makeOnboardingWindow = makeOnboardingWindow};
}

}  // namespace corvane
