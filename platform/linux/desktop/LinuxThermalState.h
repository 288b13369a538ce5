#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Observers.h"
#include "platform/SerialQueue.h"
#include "platform/ThermalStateMonitor.h"
#include "platform/linux/desktop/ThermalZones.h"

namespace corvane {

/// The thermal state by the kernel's thermal zones, read at once and then every 5 s. Main loop.
class LinuxThermalState final : public ThermalStateMonitor {
public:
    /// `mainLoop` outlives the monitor; `root` is an absolute path.
    explicit LinuxThermalState(SerialQueue& mainLoop, std::string root = "/sys");

    [[nodiscard]] ThermalState state() const override { return state_; }
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override;

private:
    void readAgain();

    ThermalZones zones_;
    ThermalState state_;
    Observers observers_;
    std::unique_ptr<Timer> timer_;
};

}  // namespace corvane
