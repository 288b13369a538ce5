#include "platform/simulated/MacHardware.h"

#include <algorithm>

#include "platform/simulated/Noise.h"

namespace corvane {

namespace {

constexpr double stepSeconds = std::chrono::duration<double>(MacHardware::stepLength).count();

/// A longer gap (a suspended computer) is shortened to this: every temperature has settled long before.
constexpr std::int64_t mostSteps = std::chrono::hours(24) / MacHardware::stepLength;

/// Sensors have the channels below.
constexpr std::uint64_t firstTachometerChannel = 1000;

std::vector<SimulatedFan> fansOf(const MacModel& model) {
    std::vector<SimulatedFan> fans;
    for (const FanLimits& limits : model.fans) {
        fans.emplace_back(limits, model.firmware);
    }
    return fans;
}

double meanSpeed(const std::vector<SimulatedFan>& fans) {
    double sum = 0.0;
    for (const SimulatedFan& fan : fans) {
        sum += fan.speed();
    }
    return fans.empty() ? 0.0 : sum / static_cast<double>(fans.size());
}

}  // namespace

MacHardware::MacHardware(const MacModel& model, std::uint64_t seed, BootTime start)
    : model_(model),
      seed_(seed),
      start_(start),
      now_(start),
      load_(model.idleWatts),
      fans_(fansOf(model)),
      thermal_(model.thermal, load_, ambient_, meanSpeed(fans_)) {}

void MacHardware::catchUp(BootTime now) {
    now_ = now;
    const std::int64_t due = (now_ - start_) / stepLength;
    stepsDone_ = std::max(stepsDone_, due - mostSteps);
    for (; stepsDone_ < due; ++stepsDone_) {
        step();
    }
}

void MacHardware::step() {
    for (SimulatedFan& fan : fans_) {
        fan.step(stepSeconds, thermal_.dieTemperature());
    }
    thermal_.step(stepSeconds, heat(), ambient_, meanSpeed(fans_));
}

double MacHardware::heat() const {
    const double left = (throttledAt - thermal_.dieTemperature()) / (throttledAt - throttlesFrom);
    return load_ * std::clamp(left, 0.0, 1.0);
}

SmcResult MacHardware::force(std::size_t fan) {
    if (!letsFansBeForced()) {
        return SmcResult::badCommand;
    }
    fans_.at(fan).force();
    return SmcResult::success;
}

bool MacHardware::letsFansBeForced() {
    if (model_.forceSwitch != ForceSwitch::required) {
        return true;
    }
    if (forceSwitch_ == 0) {
        return false;
    }
    forcingAsked_ = forcingAsked_.value_or(now_);
    return now_ - *forcingAsked_ >= forcingTakes;
}

void MacHardware::setForceSwitch(std::uint8_t value) {
    forceSwitch_ = value;
    if (model_.forceSwitch == ForceSwitch::required && value == 0) {
        forcingAsked_.reset();
        for (SimulatedFan& fan : fans_) {
            fan.handBack();
        }
    }
}

double MacHardware::tachometer(std::size_t fan) const {
    const double speed = fans_.at(fan).speed();
    if (speed <= 0.0) {
        return 0.0;
    }
    return std::max(0.0, speed + tachometerNoise * noise(firstTachometerChannel + fan));
}

double MacHardware::sensor(std::size_t sensor) const {
    const SensorSpec& spec = model_.sensors.at(sensor);
    const double offset = static_cast<double>(spec.offset);
    const double scatter = sensorNoise * noise(sensor);
    switch (spec.source) {
        case SensorSource::fixed:
            return offset;
        case SensorSource::room:
            return ambient_ + offset + scatter;
        case SensorSource::sink:
            return thermal_.sinkTemperature() + offset + scatter;
        case SensorSource::gatedCore:
            if (load_ < model_.gatingWatts) {
                return gatedCoreReading;
            }
            break;
        case SensorSource::die:
            break;
    }
    return thermal_.dieTemperature() + offset + scatter;
}

double MacHardware::noise(std::uint64_t channel) const {
    return noiseAt(seed_, channel, static_cast<std::uint64_t>(stepsDone_));
}

}  // namespace corvane
