#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/Observers.h"
#include "platform/ThermalStateMonitor.h"

namespace corvane {

/// A thermal state that is what it is set to. Main loop.
class SimulatedThermalState final : public ThermalStateMonitor {
public:
    explicit SimulatedThermalState(ThermalState state = ThermalState::nominal) : state_(state) {}

    [[nodiscard]] ThermalState state() const override { return state_; }

    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override {
        return observers_.add(std::move(changed));
    }

    /// Announces the state before it returns, if it is another one.
    void set(ThermalState state) {
        if (std::exchange(state_, state) != state) {
            observers_.notify();
        }
    }

private:
    ThermalState state_;
    Observers observers_;
};

}  // namespace corvane
