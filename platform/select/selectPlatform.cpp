#include "platform/select/selectPlatform.h"

#include <utility>

#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxCommandPlatform.h"
#include "platform/linux/LinuxHelperPlatform.h"
#include "platform/simulated/MakeSimulatedSmc.h"
#include "platform/simulated/SimulatedSleepSetting.h"

namespace corvane {

namespace {

/// A machine that is never suspended.
class NoSuspend final : public SuspendObserver {
public:
    void observe(std::function<void()> /*beforeSuspend*/) override {}
};

/// The simulated Mac in a real process: its own hardware and power management, this machine's buses and
/// clock.
class SimulatedHelperPlatform final : public LinuxHelperPlatform {
public:
    explicit SimulatedHelperPlatform(const PlatformOptions& options)
        : LinuxHelperPlatform({options.helperBus}, options.sysfsRoot), scenarioPath_(options.scenarioPath) {}

    std::unique_ptr<SmcConnection> makeSmcConnection(SerialQueue& queue) override {
        return makeSimulatedSmc([&queue] { return queue.bootTime(); }, scenarioPath_, log());
    }
    std::unique_ptr<SystemSleepSetting> makeSystemSleepSetting() override {
        return std::make_unique<SimulatedSleepSetting>();
    }
    std::unique_ptr<SuspendObserver> makeSuspendObserver() override { return std::make_unique<NoSuspend>(); }

private:
    std::string scenarioPath_;
};

class SimulatedCommandPlatform final : public LinuxCommandPlatform {
public:
    explicit SimulatedCommandPlatform(const PlatformOptions& options)
        : LinuxCommandPlatform(options.sysfsRoot), scenarioPath_(options.scenarioPath) {}

    std::unique_ptr<SmcConnection> makeSmcConnection() override {
        return makeSimulatedSmc(linuxBootTime, scenarioPath_, log());
    }

private:
    std::string scenarioPath_;
};

}  // namespace

std::unique_ptr<HelperPlatform> selectHelperPlatform(const PlatformOptions& options) {
    if (options.smc == PlatformOptions::Smc::simulated) {
        return std::make_unique<SimulatedHelperPlatform>(options);
    }
    return std::make_unique<LinuxHelperPlatform>(HelperBus{options.helperBus}, options.sysfsRoot);
}

std::unique_ptr<CommandPlatform> selectCommandPlatform(const PlatformOptions& options) {
    if (options.smc == PlatformOptions::Smc::simulated) {
        return std::make_unique<SimulatedCommandPlatform>(options);
    }
    return std::make_unique<LinuxCommandPlatform>(options.sysfsRoot);
}

}  // namespace corvane
