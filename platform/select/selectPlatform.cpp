#include "platform/select/selectPlatform.h"

#include <utility>

#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxCommandPlatform.h"
#include "platform/linux/LinuxHelperPlatform.h"
#include "platform/simulated/MakeSimulatedSmc.h"

namespace corvane {

namespace {

/// A machine that is never suspended.
class NoSuspend final : public SuspendObserver {
public:
    void observe(std::function<void()> /*beforeSuspend*/, std::function<void()> /*afterResume*/) override {}
};

/// A machine without a lid: there is nothing to set.
class NoLid final : public SystemSleepSetting {
public:
    std::optional<std::string> setSleepDisabled(bool /*disabled*/) override { return std::nullopt; }
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
        return std::make_unique<NoLid>();
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
