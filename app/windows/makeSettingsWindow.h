#pragma once

#include <functional>
#include <memory>

#include "app/settings/SettingsState.h"
#include "app/windows/QuickWindow.h"

namespace corvane {

/// The settings window, which shows `state` and speaks its language at once. What it is given outlives it.
/// Main loop.
[[nodiscard]] std::unique_ptr<QuickWindow> makeSettingsWindow(const WindowServices& services,
                                                              SettingsState& state, WindowClosed closed);

}  // namespace corvane
