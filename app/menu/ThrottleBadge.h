#pragma once

#include <optional>

#include "app/shell/Lang.h"
#include "platform/ThermalStateMonitor.h"

namespace corvane {

/// The system's thermal state as a word and the role of a colour; UTF-8.
struct ThrottleBadge {
    const char* label;
    /// "yellow", "orange" or "red".
    const char* role;

    /// None while the state is nominal. Main loop.
    [[nodiscard]] static std::optional<ThrottleBadge> infoFor(ThermalState state, const Lang& lang);
};

}  // namespace corvane
