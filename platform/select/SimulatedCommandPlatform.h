#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/CommandPlatform.h"
#include "platform/simulated/makeSimulatedSmc.h"

namespace corvane {

/// A diagnostic command on the simulated Mac; all but the hardware is `Machine`'s, which is the commands'
/// platform on this one.
template <typename Machine>
class SimulatedCommandPlatform final : public Machine {
public:
    template <typename... Arguments>
    explicit SimulatedCommandPlatform(std::string scenarioPath, Arguments&&... machine)
        : Machine(std::forward<Arguments>(machine)...), scenarioPath_(std::move(scenarioPath)) {}

    std::unique_ptr<SmcConnection> makeSmcConnection() override {
        return makeSimulatedSmc([this] { return this->pause().bootTime(); }, scenarioPath_, this->log());
    }

private:
    std::string scenarioPath_;
};

}  // namespace corvane
