#pragma once

#include <chrono>
#include <utility>

#include "platform/simulated/SimulatedMac.h"
#include "platform/simulated/SimulatedSmc.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/simulated/SmcClient.h"

namespace corvane {

/// A simulated Mac on virtual time, with a client of its SMC.
struct MacOnVirtualTime {
    explicit MacOnVirtualTime(MacModel model, std::uint64_t seed = 1)
        : mac({.model = std::move(model), .seed = seed}, [this] { return time.bootTime(); }) {}

    VirtualTime time;
    SimulatedMac mac;
    SimulatedSmc connection{mac};
    SmcClient smc{connection};
};

}  // namespace corvane
