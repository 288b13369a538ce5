#pragma once

#include <bit>
#include <cstdint>
#include <optional>

namespace corvane {

/// Something wrong with a key of the simulated machine.
struct KeyFault {
    enum class Kind : std::uint8_t {
        vanished,        ///< the key is gone: neither listed nor known
        readFails,       ///< reads answer "not readable"
        stale,           ///< reads repeat what the key read when the fault began
        spike,           ///< the next `reads` reads answer `value`, then all is well
        writeRefused,    ///< writes answer "not writable"
        neverAutomatic,  ///< a mode key that reads `value` instead of 0; with 1, the fan stays forced too
    };

    Kind kind = Kind::vanished;
    float value = 0.0F;
    std::uint32_t reads = 0;

    static constexpr KeyFault vanished() { return {Kind::vanished}; }
    static constexpr KeyFault readFails() { return {Kind::readFails}; }
    static constexpr KeyFault stale() { return {Kind::stale}; }
    static constexpr KeyFault spike(float value, std::uint32_t reads = 1) {
        return {Kind::spike, value, reads};
    }
    static constexpr KeyFault writeRefused() { return {Kind::writeRefused}; }
    static constexpr KeyFault neverAutomatic(std::uint8_t mode) {
        return {Kind::neverAutomatic, static_cast<float>(mode)};
    }

    /// By the bits of the value, so that NaN equals itself.
    constexpr bool operator==(const KeyFault& other) const {
        return kind == other.kind && reads == other.reads &&
               std::bit_cast<std::uint32_t>(value) == std::bit_cast<std::uint32_t>(other.value);
    }
};

/// What is done to a key from outside.
struct KeyCondition {
    /// The value every read answers instead of the true one, whatever the key measures. Any float.
    std::optional<float> held;
    std::optional<KeyFault> fault;
};

}  // namespace corvane
