#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/SmcKeyTable.h"

namespace corvane {

/// What a temperature key of the simulated machine measures.
enum class SensorSource : std::uint8_t {
    die,        ///< the die, plus the offset
    sink,       ///< the heat sink, plus the offset
    room,       ///< the air around the machine, plus the offset
    gatedCore,  ///< the die, plus the offset; exactly 40.0 while the core has no power
    fixed,      ///< nothing: the key always reads the offset
};

/// How a temperature key stores its value.
enum class SensorType : std::uint8_t {
    flt,   ///< 4 bytes, IEEE single, little-endian
    ioft,  ///< 8 bytes, signed with 16 fraction bits, little-endian
    si32,  ///< 4 bytes, signed integer, little-endian
};

/// One temperature key of a machine.
struct SensorSpec {
    /// Four characters, packed as `fourCharCode` does.
    std::uint32_t name = 0;
    SensorSource source = SensorSource::die;
    /// K above what it measures; °C for `SensorSource::fixed`.
    float offset = 0.0F;
    SensorType type = SensorType::flt;
};

/// One word for each kind of sensor, for tables of them.
namespace sensor {

constexpr SensorSpec die(std::string_view name, float offset, SensorType type = SensorType::flt) {
    return {fourCharCode(name), SensorSource::die, offset, type};
}

constexpr SensorSpec sink(std::string_view name, float offset, SensorType type = SensorType::flt) {
    return {fourCharCode(name), SensorSource::sink, offset, type};
}

constexpr SensorSpec room(std::string_view name, float offset, SensorType type = SensorType::flt) {
    return {fourCharCode(name), SensorSource::room, offset, type};
}

constexpr SensorSpec gatedCore(std::string_view name, float offset, SensorType type = SensorType::flt) {
    return {fourCharCode(name), SensorSource::gatedCore, offset, type};
}

constexpr SensorSpec fixed(std::string_view name, float value, SensorType type = SensorType::flt) {
    return {fourCharCode(name), SensorSource::fixed, value, type};
}

}  // namespace sensor

/// The temperature keys of real machines, ascending by name. The hottest one of each reads the die exactly.
std::span<const SensorSpec> m1ProSensors();
std::span<const SensorSpec> m2Sensors();
std::span<const SensorSpec> m4Sensors();

}  // namespace corvane
