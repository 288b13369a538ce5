#pragma once

#include <optional>

#include "platform/simulated/SimulatedPowerSources.h"

namespace corvane {

/// A battery that the computer runs on, or that is being charged, at a percentage.
inline SimulatedPowerSources::Descriptions onBattery(std::optional<int> percentage) {
    return {PowerSourceDescription{
        .currentCapacity = percentage, .maxCapacity = 100, .state = "Battery Power", .isCharging = false}};
}
inline SimulatedPowerSources::Descriptions onMains(std::optional<int> percentage) {
    return {PowerSourceDescription{.currentCapacity = percentage,
                                   .maxCapacity = 100,
                                   .state = PowerSources::acPower,
                                   .isCharging = true}};
}

}  // namespace corvane
