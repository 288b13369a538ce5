#include "platform/linux/LinuxCommandPlatform.h"
#include "platform/linux/LinuxHelperPlatform.h"
#include "platform/select/SimulatedCommandPlatform.h"
#include "platform/select/SimulatedHelperPlatform.h"
#include "platform/select/WithoutPowerManagement.h"
#include "platform/select/selectPlatform.h"

namespace corvane {

namespace {

/// The system's own helper minds the system's sleep and lid; one that somebody tries out does not.
std::unique_ptr<HelperPlatform> simulatedHelperPlatform(const PlatformOptions& options,
                                                        const HelperBus& bus) {
    if (bus.isSystem()) {
        return std::make_unique<SimulatedHelperPlatform<LinuxHelperPlatform>>(options.scenarioPath, bus,
                                                                              options.sysfsRoot);
    }
    return std::make_unique<SimulatedHelperPlatform<WithoutPowerManagement<LinuxHelperPlatform>>>(
        options.scenarioPath, bus, options.sysfsRoot);
}

}  // namespace

std::unique_ptr<HelperPlatform> selectHelperPlatform(const PlatformOptions& options) {
    const HelperBus bus{options.helperBus};
    if (options.smc == PlatformOptions::Smc::simulated) {
        return simulatedHelperPlatform(options, bus);
    }
    return std::make_unique<LinuxHelperPlatform>(bus, options.sysfsRoot);
}

std::unique_ptr<CommandPlatform> selectCommandPlatform(const PlatformOptions& options) {
    if (options.smc == PlatformOptions::Smc::simulated) {
        return std::make_unique<SimulatedCommandPlatform<LinuxCommandPlatform>>(options.scenarioPath,
                                                                                options.sysfsRoot);
    }
    return std::make_unique<LinuxCommandPlatform>(options.sysfsRoot);
}

}  // namespace corvane
