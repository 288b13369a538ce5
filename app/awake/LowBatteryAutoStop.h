#pragma once

#include "platform/UserDefaults.h"

namespace corvane {

/// The user's choice whether a low battery ends what keeps the computer awake. Each owner has its own limit.
struct LowBatteryAutoStop {
    static constexpr const char* setting = "lowBatteryAutoStop";

    /// On unless it is stored as off; anything but a Boolean counts as not stored.
    [[nodiscard]] static bool isOn(const UserDefaults& defaults) {
        return defaults.get<bool>(setting).value_or(true);
    }
};

}  // namespace corvane
