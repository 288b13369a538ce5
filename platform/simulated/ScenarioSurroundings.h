#pragma once

#include <memory>

#include "platform/SerialQueue.h"
#include "platform/simulated/ScenarioReader.h"
#include "platform/simulated/SimulatedDisplays.h"
#include "platform/simulated/SimulatedPowerSources.h"
#include "platform/simulated/SimulatedRunningApplications.h"
#include "platform/simulated/SimulatedThermalState.h"
#include "platform/simulated/SimulatedVolumes.h"

namespace corvane {

/// Makes the services of a simulated Mac's system and keeps them to its control file, which it looks at while
/// the main loop runs. Each service is made at most once, is as the file says from the beginning, and lives
/// until the main loop has ended. Main loop.
class ScenarioSurroundings {
public:
    /// `mainLoop` outlives the surroundings.
    ScenarioSurroundings(SerialQueue& mainLoop, ScenarioReader reader);

    [[nodiscard]] std::unique_ptr<PowerSources> makePowerSources();
    [[nodiscard]] std::unique_ptr<ThermalStateMonitor> makeThermalStateMonitor();
    [[nodiscard]] std::unique_ptr<Displays> makeDisplays();
    [[nodiscard]] std::unique_ptr<RunningApplications> makeRunningApplications();
    [[nodiscard]] std::unique_ptr<Volumes> makeVolumes();

private:
    void followFile();
    void apply();

    SerialQueue& mainLoop_;
    ScenarioReader reader_;
    Surroundings surroundings_;
    // Not owned; null while not made.
    SimulatedPowerSources* powerSources_ = nullptr;
    SimulatedThermalState* thermalState_ = nullptr;
    SimulatedDisplays* displays_ = nullptr;
    SimulatedRunningApplications* applications_ = nullptr;
    SimulatedVolumes* volumes_ = nullptr;
    std::unique_ptr<Timer> timer_;
};

}  // namespace corvane
