#pragma once

#include <functional>
#include <memory>

#include "platform/Observation.h"

namespace corvane {

/// How hot the system feels, in order.
enum class ThermalState { nominal, fair, serious, critical };

/// The system's thermal state. Belongs to the main loop.
class ThermalStateMonitor {
public:
    ThermalStateMonitor() = default;
    ThermalStateMonitor(const ThermalStateMonitor&) = delete;
    ThermalStateMonitor& operator=(const ThermalStateMonitor&) = delete;
    virtual ~ThermalStateMonitor() = default;

    /// `nominal` where the system does not tell.
    [[nodiscard]] virtual ThermalState state() const = 0;

    /// Runs `changed` on the main loop after each change of the state, not for the present one. The monitor
    /// outlives the observation.
    [[nodiscard]] virtual std::unique_ptr<Observation> observe(std::function<void()> changed) = 0;
};

}  // namespace corvane
