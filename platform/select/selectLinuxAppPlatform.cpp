#include "platform/linux/gui/LinuxAppPlatform.h"
#include "platform/select/SimulatedAppPlatform.h"
#include "platform/select/WithoutPowerAssertions.h"
#include "platform/select/selectAppPlatform.h"

namespace corvane {

namespace {

/// The application of the system's own helper keeps the system awake; one that somebody tries out does not.
std::unique_ptr<AppPlatform> simulatedAppPlatform(const PlatformOptions& options, const HelperBus& bus) {
    if (bus.isSystem()) {
        return std::make_unique<SimulatedAppPlatform<LinuxAppPlatform>>(options.scenarioPath, bus,
                                                                        options.sysfsRoot);
    }
    return std::make_unique<SimulatedAppPlatform<WithoutPowerAssertions<LinuxAppPlatform>>>(
        options.scenarioPath, bus, options.sysfsRoot);
}

}  // namespace

std::unique_ptr<AppPlatform> selectAppPlatform(const PlatformOptions& options) {
    const HelperBus bus{options.helperBus};
    if (options.smc == PlatformOptions::Smc::simulated) {
        return simulatedAppPlatform(options, bus);
    }
    return std::make_unique<LinuxAppPlatform>(bus, options.sysfsRoot);
}

}  // namespace corvane
