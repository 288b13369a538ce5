#include "platform/select/selectAppPlatform.h"

#include "platform/linux/gui/LinuxAppPlatform.h"
#include "platform/simulated/ScenarioSurroundings.h"
#include "platform/simulated/SimulatedPowerAssertions.h"

namespace corvane {

namespace {

/// The application of a simulated Mac: its own power and what is around it, this machine's desktop, buses and
/// network.
class SimulatedAppPlatform final : public LinuxAppPlatform {
public:
    SimulatedAppPlatform(const HelperBus& bus, const PlatformOptions& options)
        : LinuxAppPlatform(bus, options.sysfsRoot),
          surroundings_(mainQueue(), ScenarioReader(scenarioSourceFor(options.scenarioPath),
                                                    options.scenarioPath, log())) {}

    std::unique_ptr<ThermalStateMonitor> makeThermalStateMonitor() override {
        return surroundings_.makeThermalStateMonitor();
    }
    std::unique_ptr<PowerSources> makePowerSources() override { return surroundings_.makePowerSources(); }
    std::unique_ptr<PowerAssertions> makePowerAssertions() override {
        return std::make_unique<SimulatedPowerAssertions>();
    }
    std::unique_ptr<Displays> makeDisplays() override { return surroundings_.makeDisplays(); }
    std::unique_ptr<RunningApplications> makeRunningApplications() override {
        return surroundings_.makeRunningApplications();
    }
    std::unique_ptr<Volumes> makeVolumes() override { return surroundings_.makeVolumes(); }

private:
    ScenarioSurroundings surroundings_;
};

}  // namespace

std::unique_ptr<AppPlatform> selectAppPlatform(const PlatformOptions& options) {
    const HelperBus bus{options.helperBus};
    if (options.smc == PlatformOptions::Smc::simulated) {
        return std::make_unique<SimulatedAppPlatform>(bus, options);
    }
    return std::make_unique<LinuxAppPlatform>(bus, options.sysfsRoot);
}

}  // namespace corvane
