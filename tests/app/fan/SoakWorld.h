#pragma once

#include <cstdint>
#include <utility>

#include "tests/app/fan/FanMachine.h"
#include "tests/app/fan/SoakDice.h"
#include "tests/app/fan/SoakOracle.h"
#include "tests/app/fan/SoakStory.h"

namespace corvane {

/// Where a life takes place: the machine, what decides what becomes of it, and what watches and tells it.
struct SoakWorld {
    SoakWorld(MacModel model, std::uint64_t seed) : dice(seed), machine(std::move(model)) {}

    [[nodiscard]] FanController& fan() { return *machine.fan; }
    [[nodiscard]] Duration now() const { return machine.helper.now(); }

    SoakDice dice;
    FanMachine machine;
    SoakOracle oracle{machine};
    SoakStory story;
};

}  // namespace corvane
