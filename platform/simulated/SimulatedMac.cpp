#include "platform/simulated/SimulatedMac.h"

#include <algorithm>
#include <bit>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/PlausibleLimits.h"

namespace corvane {

namespace {

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
      clock_(std::move(clock)),
      hardware_(model_, options.seed, clock_()),
      allKeys_(keysOf(model_)),
      states_(allKeys_.size()),
      written_(model_.fans.size()) {
    listKeys();
}

void SimulatedMac::setLoad(double watts) {
    present().setLoad(watts);
}

void SimulatedMac::setAmbient(double celsius) {
    present().setAmbient(celsius);
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

void SimulatedMac::catchUp() {
    hardware_.catchUp(clock_());
}

MacHardware& SimulatedMac::present() {
    catchUp();
    return hardware_;
}

double SimulatedMac::dieTemperature() {
    return present().dieTemperature();
}

double SimulatedMac::sinkTemperature() {
    return present().sinkTemperature();
}

double SimulatedMac::fanSpeed(std::size_t fan) {
    return present().fans().at(fan).speed();
}

double SimulatedMac::fanTarget(std::size_t fan) {
    return static_cast<double>(present().fans().at(fan).target());
}

bool SimulatedMac::isFanForced(std::size_t fan) {
    return present().fans().at(fan).isForced();
}

bool SimulatedMac::isAnyFanForced() {
    return std::ranges::any_of(present().fans(), &SimulatedFan::isForced);
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
    if (hardware_.fans()[allKeys_[key].index].isForced()) {
        return 1.0;
    }
    return isKind(fault, KeyFault::Kind::neverAutomatic) ? static_cast<double>(fault->value) : 0.0;
}

double SimulatedMac::trueValue(const MacKey& key) const {
    switch (key.role) {
        case KeyRole::keyCount:
            return static_cast<double>(listed_.size());
        case KeyRole::fanCount:
            return static_cast<double>(hardware_.fans().size());
        case KeyRole::forceSwitch:
            return hardware_.forceSwitch();
        case KeyRole::fanSpeed:
            return hardware_.tachometer(key.index);
        case KeyRole::fanMinimum:
            return static_cast<double>(hardware_.fans()[key.index].limits().minimum);
        case KeyRole::fanMaximum:
            return static_cast<double>(hardware_.fans()[key.index].limits().maximum);
        case KeyRole::fanTarget:
            return static_cast<double>(hardware_.fans()[key.index].target());
        case KeyRole::sensor:
            return hardware_.sensor(key.index);
        case KeyRole::fanMode:
            break;
    }
    return 0.0;
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
            hardware_.setForceSwitch(bytes[0]);
            return SmcResult::success;
        case KeyRole::fanMode:
            return setMode(key, bytes[0]);
        case KeyRole::fanTarget:
            written_[target.index] = floatFrom(bytes);
            hardware_.setTarget(target.index, floatFrom(bytes));
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

SmcResult SimulatedMac::setMode(std::size_t key, std::uint8_t mode) {
    const std::size_t fan = allKeys_[key].index;
    if (mode == 1) {
        return areLimitsKnown(fan) ? hardware_.force(fan) : SmcResult::badArgument;
    }
    if (mode != 0) {
        return SmcResult::badArgument;
    }
    const std::optional<KeyFault>& fault = states_[key].condition.fault;
    const bool staysForced = isKind(fault, KeyFault::Kind::neverAutomatic) && fault->value == 1.0F;
    if (!staysForced) {
        hardware_.handBack(fan);
    }
    return SmcResult::success;
}

bool SimulatedMac::areLimitsKnown(std::size_t fan) const {
    return arePlausibleLimits(readableLimit(fan, KeyRole::fanMinimum),
                              readableLimit(fan, KeyRole::fanMaximum));
}

std::optional<double> SimulatedMac::readableLimit(std::size_t fan, KeyRole role) const {
    const auto key = std::ranges::find_if(
        allKeys_, [&](const MacKey& candidate) { return candidate.role == role && candidate.index == fan; });
    const auto index = static_cast<std::size_t>(key - allKeys_.begin());
    const std::optional<KeyFault>& fault = states_[index].condition.fault;
    if (isKind(fault, KeyFault::Kind::vanished) || isKind(fault, KeyFault::Kind::readFails)) {
        return std::nullopt;
    }
    return steadyValue(index);
}

}  // namespace corvane
