#pragma once

#include <optional>

#include "platform/simulated/Scenario.h"
#include "platform/simulated/SimulatedMac.h"

namespace corvane {

/// Brings a running machine to the state a scenario describes. Returns what prevents it; then nothing has
/// changed.
std::optional<ScenarioError> applyScenario(const Scenario& scenario, SimulatedMac& mac);

}  // namespace corvane
