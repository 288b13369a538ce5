#pragma once

#include <QString>

#include "app/awake/PowerInfo.h"

namespace corvane {

/// How the panel shows a battery. Pure functions; any thread.
struct BatteryChip {
    /// The charge, percent, up to which the chip is a warning.
    static constexpr int lowPercent = 20;

    /// The name of a symbol: the bolt while charging, or else the quarter nearest to the charge, the empty
    /// one for a charge that is not known.
    [[nodiscard]] static QString symbol(const PowerInfo& power);
    /// "85%"; empty for a charge that is not known.
    [[nodiscard]] static QString charge(const PowerInfo& power);
    [[nodiscard]] static bool isLow(const PowerInfo& power);
};

}  // namespace corvane
