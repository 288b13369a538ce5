#include "platform/select/selectAppPlatform.h"

#include "platform/linux/desktop/LinuxAppPlatform.h"
#include "platform/simulated/SimulatedPowerSources.h"
#include "platform/simulated/SimulatedThermalState.h"

namespace corvane {

namespace {

/// The application of a simulated Mac: its own power and heat, this machine's desktop and buses.
class SimulatedAppPlatform final : public LinuxAppPlatform {
public:
    using LinuxAppPlatform::LinuxAppPlatform;

    std::unique_ptr<ThermalStateMonitor> makeThermalStateMonitor() override {
        return std::make_unique<SimulatedThermalState>();
    }
    std::unique_ptr<PowerSources> makePowerSources() override {
        return std::make_unique<SimulatedPowerSources>();
    }
};

}  // namespace

std::unique_ptr<AppPlatform> selectAppPlatform(const PlatformOptions& options) {
    const HelperBus bus{options.helperBus};
    if (options.smc == PlatformOptions::Smc::simulated) {
        return std::make_unique<SimulatedAppPlatform>(bus, options.sysfsRoot);
    }
    return std::make_unique<LinuxAppPlatform>(bus, options.sysfsRoot);
}

}  // namespace corvane
