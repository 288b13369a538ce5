#pragma once

#include <optional>

namespace corvane {

/// How the computer is powered, at one moment. As made, it stands for a computer without a battery: that
/// counts as on AC power, so no battery rule ever fires on it.
struct PowerInfo {
    /// A power source with a readable description exists.
    bool hasBattery = false;
    /// The source draws from AC power.
    bool onAC = true;
    /// Charge, 0...100; none when it cannot be computed.
    std::optional<int> percentage;
    bool isCharging = false;

    /// The charge that is left while the battery is all there is to run on; none on AC, without a battery and
    /// when the charge is not known. What every battery rule looks at.
    [[nodiscard]] std::optional<int> percentageOnBattery() const {
        return hasBattery && !onAC ? percentage : std::nullopt;
    }

    bool operator==(const PowerInfo&) const = default;
};

}  // namespace corvane
