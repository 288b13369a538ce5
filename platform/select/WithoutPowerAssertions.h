#pragma once

#include <memory>

#include "platform/PowerAssertions.h"
#include "platform/simulated/SimulatedPowerAssertions.h"

namespace corvane {

/// `Machine`, the application's platform here, but nothing that happens in it keeps this machine awake.
template <typename Machine>
class WithoutPowerAssertions : public Machine {
public:
    using Machine::Machine;

    std::unique_ptr<PowerAssertions> makePowerAssertions() override {
        return std::make_unique<SimulatedPowerAssertions>();
    }
};

}  // namespace corvane
