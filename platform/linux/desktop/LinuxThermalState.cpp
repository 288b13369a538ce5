#include "platform/linux/desktop/LinuxThermalState.h"

#include <utility>

namespace corvane {

namespace {

constexpr std::chrono::seconds readingPeriod{5};

}  // namespace

LinuxThermalState::LinuxThermalState(SerialQueue& mainLoop, std::string root)
    : zones_(std::move(root)),
      state_(zones_.read()),
      timer_(mainLoop.every(readingPeriod, readingPeriod, [this] { readAgain(); })) {}

std::unique_ptr<Observation> LinuxThermalState::observe(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

void LinuxThermalState::readAgain() {
    const ThermalState now = zones_.read();
    if (std::exchange(state_, now) != now) {
        observers_.notify();
    }
}

}  // namespace corvane
