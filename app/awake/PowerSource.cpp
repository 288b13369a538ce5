#include "app/awake/PowerSource.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

/// None without both capacities, or with a full charge below 1. Halves are rounded up: away from zero, and
/// what is below zero ends at 0 anyway.
std::optional<int> percentageOf(const PowerSourceDescription& source) {
    if (!source.currentCapacity || !source.maxCapacity || *source.maxCapacity < 1) {
        return std::nullopt;
    }
    const double percent = static_cast<double>(*source.currentCapacity) / *source.maxCapacity * 100;
    return static_cast<int>(std::clamp(std::round(percent), 0.0, 100.0));
}

}  // namespace

PowerInfo PowerSource::current(const PowerSources& sources) {
    for (const auto& source : sources.descriptions()) {
        if (source) {
            return {.hasBattery = true,
                    .onAC = source->state == PowerSources::acPower,
                    .percentage = percentageOf(*source),
                    .isCharging = source->isCharging.value_or(false)};
        }
    }
    return {};
}

}  // namespace corvane
