#include "platform/simulated/SimulatedMac.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/simulated/Noise.h"

namespace corvane {

namespace {

constexpr double stepSeconds = std::chrono::duration<double>(SimulatedMac::stepLength).count();

/// A longer gap (a suspended computer) is shortened to this: every temperature has settled long before.
constexpr std::int64_t mostSteps = std::chrono::hours(24) / SimulatedMac::stepLength;

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

float floatFrom(std::span<const std::uint8_t> bytes) {
    std::uint32_t bits = 0;
    for (std::size_t i = 4; i-- > 0;) {
        bits = bits << 8U | bytes[i];
    }
    return std::bit_cast<float>(bits);
}

std::array<char, 4> lettersOf(std::uint32_t name) {
    return {static_cast<char>(name >> 24U), static_cast<char>(name >> 16U), static_cast<char>(name >> 8U),
            static_cast<char>(name)};
}

bool isKind(const std::optional<KeyFault>& fault, KeyFault::Kind kind) {
    return fault && fault->kind == kind;
}

}  // namespace

SimulatedMac::SimulatedMac(Options options, Clock clock)
    : model_(std::move(options.model)),
      seed_(options.seed),
      clock_(std::move(clock)),
      start_(clock_()),
      now_(start_),
      load_(model_.idleWatts),
      fans_(fansOf(model_)),
      thermal_(model_.thermal, load_, ambient_, meanSpeed(fans_)),
      allKeys_(keysOf(model_)),
      states_(allKeys_.size()),
      written_(fans_.size()) {
    listKeys();
}

void SimulatedMac::setLoad(double watts) {
    catchUp();
    load_ = watts;
}

void SimulatedMac::setAmbient(double celsius) {
    catchUp();
    ambient_ = celsius;
}

void SimulatedMac::holdSensor(std::string_view keys, float value) {
    forEach(keys, [&](std::size_t key) { states_[key].condition.held = value; });
}

void SimulatedMac::releaseSensor(std::string_view keys) {
    forEach(keys, [&](std::size_t key) { states_[key].condition.held.reset(); });
}

void SimulatedMac::setFault(std::string_view keys, const KeyFault& fault) {
    catchUp();
    forEach(keys, [&](std::size_t key) { applyFault(key, fault); });
    listKeys();
}

void SimulatedMac::clearFault(std::string_view keys) {
    forEach(keys, [&](std::size_t key) { applyFault(key, std::nullopt); });
    listKeys();
}

void SimulatedMac::setConditions(std::span<const KeyCondition> conditions) {
    catchUp();
    for (std::size_t key = 0; key < states_.size(); ++key) {
        if (states_[key].condition.fault != conditions[key].fault) {
            applyFault(key, conditions[key].fault);
        }
        states_[key].condition.held = conditions[key].held;
    }
    listKeys();
}

void SimulatedMac::forEach(std::string_view keys, const std::function<void(std::size_t)>& change) {
    bool found = false;
    for (std::size_t key = 0; key < allKeys_.size(); ++key) {
        if (isMeantBy(allKeys_[key].key.name, keys)) {
            change(key);
            found = true;
        }
    }
    if (!found) {
        throw std::invalid_argument("this Mac has no key " + std::string(keys));
    }
}

void SimulatedMac::applyFault(std::size_t key, const std::optional<KeyFault>& fault) {
    KeyState& state = states_[key];
    if (isKind(fault, KeyFault::Kind::stale)) {
        const SmcKey& declared = allKeys_[key].key;
        encodeValue(declared, steadyValue(key), std::span(state.staleBytes).first(declared.size));
    }
    state.spikesLeft = isKind(fault, KeyFault::Kind::spike) ? fault->reads : 0;
    state.condition.fault = fault;
}

void SimulatedMac::listKeys() {
    listed_.clear();
    listedAs_.clear();
    for (std::size_t key = 0; key < allKeys_.size(); ++key) {
        if (!isKind(states_[key].condition.fault, KeyFault::Kind::vanished)) {
            listed_.push_back(allKeys_[key].key);
            listedAs_.push_back(key);
        }
    }
}

double SimulatedMac::dieTemperature() {
    catchUp();
    return thermal_.dieTemperature();
}

double SimulatedMac::sinkTemperature() {
    catchUp();
    return thermal_.sinkTemperature();
}

double SimulatedMac::fanSpeed(std::size_t fan) {
    catchUp();
    return fans_.at(fan).speed();
}

double SimulatedMac::fanTarget(std::size_t fan) {
    catchUp();
    return static_cast<double>(fans_.at(fan).target());
}

bool SimulatedMac::isFanForced(std::size_t fan) {
    catchUp();
    return fans_.at(fan).isForced();
}

bool SimulatedMac::isAnyFanForced() {
    catchUp();
    return std::ranges::any_of(fans_, &SimulatedFan::isForced);
}

void SimulatedMac::catchUp() {
    now_ = clock_();
    const std::int64_t due = (now_ - start_) / stepLength;
    stepsDone_ = std::max(stepsDone_, due - mostSteps);
    for (; stepsDone_ < due; ++stepsDone_) {
        step();
    }
}

void SimulatedMac::step() {
    for (SimulatedFan& fan : fans_) {
        fan.step(stepSeconds, thermal_.dieTemperature());
    }
    thermal_.step(stepSeconds, heat(), ambient_, meanSpeed(fans_));
}

double SimulatedMac::heat() const {
    const double left = (throttledAt - thermal_.dieTemperature()) / (throttledAt - throttlesFrom);
    return load_ * std::clamp(left, 0.0, 1.0);
}

SmcResult SimulatedMac::read(std::size_t index, std::span<std::uint8_t> bytes) {
    catchUp();
    const std::size_t key = listedAs_[index];
    KeyState& state = states_[key];
    if (isKind(state.condition.fault, KeyFault::Kind::readFails)) {
        return SmcResult::notReadable;
    }
    if (isKind(state.condition.fault, KeyFault::Kind::stale)) {
        std::ranges::copy(std::span(state.staleBytes).first(bytes.size()), bytes.begin());
        return SmcResult::success;
    }
    if (state.spikesLeft > 0) {
        --state.spikesLeft;
        encodeValue(allKeys_[key].key, static_cast<double>(state.condition.fault->value), bytes);
        return SmcResult::success;
    }
    encodeValue(allKeys_[key].key, steadyValue(key), bytes);
    return SmcResult::success;
}

/// What a read answers when no fault stands in its way.
double SimulatedMac::steadyValue(std::size_t key) const {
    const std::optional<float>& held = states_[key].condition.held;
    if (held) {
        return static_cast<double>(*held);
    }
    return allKeys_[key].role == KeyRole::fanMode ? mode(key) : trueValue(allKeys_[key]);
}

double SimulatedMac::mode(std::size_t key) const {
    const std::optional<KeyFault>& fault = states_[key].condition.fault;
    if (fans_[allKeys_[key].index].isForced()) {
        return 1.0;
    }
    return isKind(fault, KeyFault::Kind::neverAutomatic) ? static_cast<double>(fault->value) : 0.0;
}

double SimulatedMac::trueValue(const MacKey& key) const {
    switch (key.role) {
        case KeyRole::keyCount:
            return static_cast<double>(listed_.size());
        case KeyRole::fanCount:
            return static_cast<double>(fans_.size());
        case KeyRole::forceSwitch:
            return forceSwitch_;
        case KeyRole::fanSpeed:
            return tachometer(key.index);
        case KeyRole::fanMinimum:
            return static_cast<double>(fans_[key.index].limits().minimum);
        case KeyRole::fanMaximum:
            return static_cast<double>(fans_[key.index].limits().maximum);
        case KeyRole::fanTarget:
            return static_cast<double>(fans_[key.index].target());
        case KeyRole::sensor:
            return sensorValue(key.index);
        case KeyRole::fanMode:
            break;
    }
    return 0.0;
}

double SimulatedMac::tachometer(std::size_t fan) const {
    const double speed = fans_[fan].speed();
    if (speed <= 0.0) {
        return 0.0;
    }
    return std::max(0.0, speed + tachometerNoise * noise(firstTachometerChannel + fan));
}

double SimulatedMac::sensorValue(std::size_t sensor) const {
    const SensorSpec& spec = model_.sensors[sensor];
    const double reading = static_cast<double>(spec.offset);
    switch (spec.source) {
        case SensorSource::fixed:
            return reading;
        case SensorSource::gatedCore:
            if (load_ < model_.gatingWatts) {
                return gatedCoreReading;
            }
            break;
        case SensorSource::sink:
            return thermal_.sinkTemperature() + reading + sensorNoise * noise(sensor);
        case SensorSource::room:
            return ambient_ + reading + sensorNoise * noise(sensor);
        case SensorSource::die:
            break;
    }
    return thermal_.dieTemperature() + reading + sensorNoise * noise(sensor);
}

double SimulatedMac::noise(std::uint64_t channel) const {
    return noiseAt(seed_, channel, static_cast<std::uint64_t>(stepsDone_));
}

SmcResult SimulatedMac::write(std::size_t index, std::span<const std::uint8_t> bytes) {
    catchUp();
    const std::size_t key = listedAs_[index];
    const SmcResult result = take(key, bytes);
    ++writeCount_;
    if (observer_) {
        const std::array<char, 4> letters = lettersOf(allKeys_[key].key.name);
        observer_(std::string_view(letters.data(), letters.size()), bytes, result);
    }
    return result;
}

SmcResult SimulatedMac::take(std::size_t key, std::span<const std::uint8_t> bytes) {
    if (isKind(states_[key].condition.fault, KeyFault::Kind::writeRefused)) {
        return SmcResult::notWritable;
    }
    const MacKey& target = allKeys_[key];
    switch (target.role) {
        case KeyRole::forceSwitch:
            return setForceSwitch(bytes[0]);
        case KeyRole::fanMode:
            return setMode(key, bytes[0]);
        case KeyRole::fanTarget:
            written_[target.index] = floatFrom(bytes);
            fans_[target.index].setTarget(floatFrom(bytes));
            return SmcResult::success;
        case KeyRole::keyCount:
        case KeyRole::fanCount:
        case KeyRole::fanSpeed:
        case KeyRole::fanMinimum:
        case KeyRole::fanMaximum:
        case KeyRole::sensor:
            break;
    }
    return SmcResult::notWritable;
}

SmcResult SimulatedMac::setForceSwitch(std::uint8_t value) {
    forceSwitch_ = value;
    if (model_.forceSwitch == ForceSwitch::required && value == 0) {
        forcingAsked_.reset();
        for (SimulatedFan& fan : fans_) {
            fan.handBack();
        }
    }
    return SmcResult::success;
}

SmcResult SimulatedMac::setMode(std::size_t key, std::uint8_t mode) {
    const std::size_t fan = allKeys_[key].index;
    if (mode == 1) {
        return force(fan);
    }
    if (mode != 0) {
        return SmcResult::badArgument;
    }
    const std::optional<KeyFault>& fault = states_[key].condition.fault;
    const bool staysForced = isKind(fault, KeyFault::Kind::neverAutomatic) && fault->value == 1.0F;
    if (!staysForced) {
        fans_[fan].handBack();
    }
    return SmcResult::success;
}

SmcResult SimulatedMac::force(std::size_t fan) {
    if (!areLimitsKnown(fan)) {
        return SmcResult::badArgument;
    }
    if (!mayForce()) {
        return SmcResult::badCommand;
    }
    fans_[fan].force();
    return SmcResult::success;
}

bool SimulatedMac::mayForce() {
    if (model_.forceSwitch != ForceSwitch::required) {
        return true;
    }
    if (forceSwitch_ == 0) {
        return false;
    }
    forcingAsked_ = forcingAsked_.value_or(now_);
    return now_ - *forcingAsked_ >= forcingTakes;
}

bool SimulatedMac::areLimitsKnown(std::size_t fan) const {
    const std::optional<double> maximum = knownLimit(fan, KeyRole::fanMaximum);
    return knownLimit(fan, KeyRole::fanMinimum) && maximum && *maximum > 0.0;
}

std::optional<double> SimulatedMac::knownLimit(std::size_t fan, KeyRole role) const {
    const auto key = std::ranges::find_if(
        allKeys_, [&](const MacKey& candidate) { return candidate.role == role && candidate.index == fan; });
    const auto index = static_cast<std::size_t>(key - allKeys_.begin());
    const std::optional<KeyFault>& fault = states_[index].condition.fault;
    const double value = steadyValue(index);
    if (isKind(fault, KeyFault::Kind::vanished) || isKind(fault, KeyFault::Kind::readFails) ||
        !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

}  // namespace corvane
