#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/Displays.h"
#include "platform/ThermalStateMonitor.h"

namespace corvane {

/// What there is about a simulated Mac beyond its SMC, as its system tells the application.
struct Surroundings {
    enum class Drive { answers, hangs };

    /// Charge of the battery, 0...100 %; none without a battery.
    std::optional<int> battery;
    bool onMains = true;
    ThermalState thermalState = ThermalState::nominal;
    std::vector<Display> displays{Display{.isBuiltIn = true}};
    /// Those that run, by identifier.
    std::set<std::string> applications;
    /// External ones that are mounted, by the name of their volume.
    std::map<std::string, Drive> drives;

    bool operator==(const Surroundings&) const = default;
};

}  // namespace corvane
