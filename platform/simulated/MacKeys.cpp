#include "platform/simulated/MacKeys.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace corvane {

namespace {

constexpr std::size_t mostFans = 10;

namespace Attributes {
constexpr std::uint8_t privateWrite = 0x01;
constexpr std::uint8_t readOnly = SmcAttribute::readable;
constexpr std::uint8_t readOnlyLittle = SmcAttribute::readable | SmcAttribute::littleEndian;
constexpr std::uint8_t speed = readOnlyLittle | privateWrite;
constexpr std::uint8_t control = SmcAttribute::readable | SmcAttribute::writable | SmcAttribute::function;
constexpr std::uint8_t controlLittle = control | SmcAttribute::littleEndian;
}  // namespace Attributes

constexpr std::uint32_t flt = fourCharCode("flt ");
constexpr std::uint32_t ioft = fourCharCode("ioft");
constexpr std::uint32_t si32 = fourCharCode("si32");
constexpr std::uint32_t ui32 = fourCharCode("ui32");
constexpr std::uint32_t ui8 = fourCharCode("ui8 ");

MacKey byteKey(std::string_view name, KeyRole role, std::uint8_t attributes) {
    return {{fourCharCode(name), ui8, 1, attributes}, role, 0};
}

std::uint32_t fanKeyName(std::size_t fan, std::string_view ending) {
    const std::array<char, 4> name{'F', static_cast<char>('0' + fan), ending[0], ending[1]};
    return fourCharCode(std::string_view(name.data(), name.size()));
}

void addFanKeys(std::vector<MacKey>& keys, std::size_t fan, ModeKeys spelling) {
    const auto add = [&](std::string_view ending, std::uint32_t type, std::uint8_t size,
                         std::uint8_t attributes, KeyRole role) {
        keys.push_back({{fanKeyName(fan, ending), type, size, attributes}, role, fan});
    };
    add("Ac", flt, 4, Attributes::speed, KeyRole::fanSpeed);
    add("Mn", flt, 4, Attributes::readOnlyLittle, KeyRole::fanMinimum);
    add("Mx", flt, 4, Attributes::readOnlyLittle, KeyRole::fanMaximum);
    add("Tg", flt, 4, Attributes::controlLittle, KeyRole::fanTarget);
    add(spelling == ModeKeys::upperCase ? "Md" : "md", ui8, 1, Attributes::control, KeyRole::fanMode);
}

SmcKey sensorKey(const SensorSpec& sensor) {
    switch (sensor.type) {
        case SensorType::flt:
            return {sensor.name, flt, 4, Attributes::readOnlyLittle};
        case SensorType::ioft:
            return {sensor.name, ioft, 8, Attributes::readOnlyLittle};
        case SensorType::si32:
            return {sensor.name, si32, 4, Attributes::readOnlyLittle};
    }
    return {};
}

template <typename Integer>
Integer inRange(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    if (value <= static_cast<double>(std::numeric_limits<Integer>::min())) {
        return std::numeric_limits<Integer>::min();
    }
    // The largest 64-bit number is no double; what lies just below it is out of a double's reach anyway.
    if (value >= static_cast<double>(std::numeric_limits<Integer>::max())) {
        return std::numeric_limits<Integer>::max();
    }
    return static_cast<Integer>(value);
}

void storeLittle(std::uint64_t value, std::span<std::uint8_t> bytes) {
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(value);
        value >>= 8U;
    }
}

}  // namespace

std::vector<MacKey> keysOf(const MacModel& model) {
    if (model.fans.size() > mostFans) {
        throw std::invalid_argument("a Mac has at most 10 fans");
    }
    std::vector<MacKey> keys{
        {{fourCharCode("#KEY"), ui32, 4, Attributes::readOnly}, KeyRole::keyCount, 0},
        byteKey("FNum", KeyRole::fanCount, Attributes::readOnly),
    };
    if (model.forceSwitch != ForceSwitch::absent) {
        keys.push_back(byteKey("Ftst", KeyRole::forceSwitch, Attributes::control));
    }
    for (std::size_t fan = 0; fan < model.fans.size(); ++fan) {
        addFanKeys(keys, fan, model.modeKeys);
    }
    for (std::size_t i = 0; i < model.sensors.size(); ++i) {
        keys.push_back({sensorKey(model.sensors[i]), KeyRole::sensor, i});
    }
    const auto nameOf = [](const MacKey& key) { return key.key.name; };
    std::ranges::sort(keys, {}, nameOf);
    if (std::ranges::adjacent_find(keys, {}, nameOf) != keys.end()) {
        throw std::invalid_argument("a Mac has each key once");
    }
    return keys;
}

bool isMeantBy(std::uint32_t name, std::string_view pattern) {
    if (!pattern.ends_with('*')) {
        return pattern.size() == 4 && name == fourCharCode(pattern);
    }
    const std::string_view prefix = pattern.substr(0, pattern.size() - 1);
    for (std::size_t i = 0; i < prefix.size(); ++i) {
        if (i >= 4 ||
            static_cast<std::uint8_t>(prefix[i]) != static_cast<std::uint8_t>(name >> (24 - 8 * i))) {
            return false;
        }
    }
    return true;
}

bool canHave(const MacKey& key, const KeyFault& fault) {
    switch (fault.kind) {
        case KeyFault::Kind::neverAutomatic:
            return key.role == KeyRole::fanMode;
        case KeyFault::Kind::writeRefused:
            return (key.key.attributes & SmcAttribute::writable) != 0;
        case KeyFault::Kind::vanished:
        case KeyFault::Kind::readFails:
        case KeyFault::Kind::stale:
        case KeyFault::Kind::spike:
            break;
    }
    return true;
}

void encodeValue(const SmcKey& key, double value, std::span<std::uint8_t> bytes) {
    switch (key.type) {
        case flt:
            storeLittle(std::bit_cast<std::uint32_t>(static_cast<float>(value)), bytes);
            break;
        case ioft:
            storeLittle(static_cast<std::uint64_t>(inRange<std::int64_t>(value * 65536.0)), bytes);
            break;
        case si32:
            storeLittle(static_cast<std::uint32_t>(inRange<std::int32_t>(value)), bytes);
            break;
        case ui8:
            storeLittle(inRange<std::uint8_t>(value), bytes);
            break;
        case ui32:
            storeLittle(inRange<std::uint32_t>(value), bytes);
            std::ranges::reverse(bytes);
            break;
        default:
            std::ranges::fill(bytes, std::uint8_t{0});
    }
}

}  // namespace corvane
