#include "platform/simulated/SimulatedFan.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr double coolMachine = 0.0;

}  // namespace

SimulatedFan::SimulatedFan(const FanLimits& limits, const FirmwareCurve& curve)
    : limits_(limits), curve_(curve), firmwareRuns_(false), firmwareTarget_(0.0), speed_(0.0) {
    followFirmware(coolMachine);
    speed_ = firmwareTarget_;
}

void SimulatedFan::step(double seconds, double dieTemperature) {
    followFirmware(dieTemperature);
    const double change = goal() - speed_;
    speed_ += std::clamp(change, -slowsDownBy * seconds, speedsUpBy * seconds);
}

void SimulatedFan::force() {
    if (!forced_) {
        forcedTarget_ = static_cast<float>(firmwareTarget_);
        forced_ = true;
    }
}

void SimulatedFan::setTarget(float target) {
    if (forced_) {
        forcedTarget_ = target;
    }
}

void SimulatedFan::followFirmware(double dieTemperature) {
    firmwareRuns_ = dieTemperature >= (firmwareRuns_ ? curve_.stopsBelow : curve_.startsAt);
    if (!firmwareRuns_) {
        firmwareTarget_ = 0.0;
        return;
    }
    const double demand = (dieTemperature - curve_.risesFrom) / (curve_.fullFrom - curve_.risesFrom);
    const auto minimum = static_cast<double>(limits_.minimum);
    const auto maximum = static_cast<double>(limits_.maximum);
    firmwareTarget_ = minimum + std::clamp(demand, 0.0, 1.0) * std::max(0.0, maximum - minimum);
}

double SimulatedFan::goal() const {
    if (!forced_) {
        return firmwareTarget_;
    }
    if (!(forcedTarget_ > 0.0F)) {
        return 0.0;
    }
    return static_cast<double>(std::max(limits_.minimum, std::min(forcedTarget_, limits_.maximum)));
}

}  // namespace corvane
