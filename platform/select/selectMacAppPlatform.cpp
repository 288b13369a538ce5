#include "platform/select/LaunchdAppPlatform.h"
#include "platform/select/SimulatedAppPlatform.h"
#include "platform/select/WithoutPowerAssertions.h"
#include "platform/select/selectAppPlatform.h"

namespace corvane {

std::unique_ptr<AppPlatform> selectAppPlatform(const PlatformOptions& options) {
    if (options.smc == PlatformOptions::Smc::simulated) {
        return std::make_unique<SimulatedAppPlatform<WithoutPowerAssertions<LaunchdAppPlatform>>>(
            options.scenarioPath);
    }
    return std::make_unique<LaunchdAppPlatform>();
}

}  // namespace corvane
