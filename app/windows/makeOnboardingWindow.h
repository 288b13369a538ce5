#pragma once

#include <functional>
#include <memory>

#include "app/onboarding/OnboardingState.h"
#include "app/shell/Lang.h"
#include "app/windows/QuickWindow.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// The window of the introduction, dark whatever the desktop prefers, in the language of its pages. All
/// references outlive it. Main loop.
[[nodiscard]] std::unique_ptr<QuickWindow> makeOnboardingWindow(SerialQueue& mainLoop, const Lang& lang,
                                                                OnboardingState& introduction,
                                                                WindowClosed closed);

}  // namespace corvane
