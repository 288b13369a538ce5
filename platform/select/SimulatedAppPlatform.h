#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/AppPlatform.h"
#include "platform/simulated/ScenarioSurroundings.h"

namespace corvane {

/// The application of a simulated Mac: its own power sources and what is around it; the desktop, the way to
/// the helper and the network are those of `Machine`, which is the application's platform on this one.
template <typename Machine>
class SimulatedAppPlatform final : public Machine {
public:
    template <typename... Arguments>
    explicit SimulatedAppPlatform(const std::string& scenarioPath, Arguments&&... machine)
        : Machine(std::forward<Arguments>(machine)...),
          surroundings_(this->mainQueue(),
                        ScenarioReader(scenarioSourceFor(scenarioPath), scenarioPath, this->log())) {}

    std::unique_ptr<ThermalStateMonitor> makeThermalStateMonitor() override {
        return surroundings_.makeThermalStateMonitor();
    }
    std::unique_ptr<PowerSources> makePowerSources() override { return surroundings_.makePowerSources(); }
    std::unique_ptr<Displays> makeDisplays() override { return surroundings_.makeDisplays(); }
    std::unique_ptr<RunningApplications> makeRunningApplications() override {
        return surroundings_.makeRunningApplications();
    }
    std::unique_ptr<Volumes> makeVolumes() override { return surroundings_.makeVolumes(); }

private:
    ScenarioSurroundings surroundings_;
};

}  // namespace corvane
