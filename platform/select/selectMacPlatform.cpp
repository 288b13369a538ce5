#include "platform/macos/MacCommandPlatform.h"
#include "platform/macos/MacHelperPlatform.h"
#include "platform/select/SimulatedCommandPlatform.h"
#include "platform/select/SimulatedHelperPlatform.h"
#include "platform/select/WithoutPowerManagement.h"
#include "platform/select/selectPlatform.h"

namespace corvane {

std::unique_ptr<HelperPlatform> selectHelperPlatform(const PlatformOptions& options) {
    if (options.smc == PlatformOptions::Smc::simulated) {
        return std::make_unique<SimulatedHelperPlatform<WithoutPowerManagement<MacHelperPlatform>>>(
            options.scenarioPath);
    }
    return std::make_unique<MacHelperPlatform>();
}

std::unique_ptr<CommandPlatform> selectCommandPlatform(const PlatformOptions& options) {
    if (options.smc == PlatformOptions::Smc::simulated) {
        return std::make_unique<SimulatedCommandPlatform<MacCommandPlatform>>(options.scenarioPath);
    }
    return std::make_unique<MacCommandPlatform>();
}

}  // namespace corvane
