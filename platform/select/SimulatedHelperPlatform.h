#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/HelperPlatform.h"
#include "platform/simulated/makeSimulatedSmc.h"

namespace corvane {

/// The simulated Mac in a real process: its own hardware, all else `Machine`'s, which is the helper's
/// platform on this one.
template <typename Machine>
class SimulatedHelperPlatform final : public Machine {
public:
    template <typename... Arguments>
    explicit SimulatedHelperPlatform(std::string scenarioPath, Arguments&&... machine)
        : Machine(std::forward<Arguments>(machine)...), scenarioPath_(std::move(scenarioPath)) {}

    std::unique_ptr<SmcConnection> makeSmcConnection(SerialQueue& queue) override {
        return makeSimulatedSmc([&queue] { return queue.bootTime(); }, scenarioPath_, this->log());
    }

private:
    std::string scenarioPath_;
};

}  // namespace corvane
