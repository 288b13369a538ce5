#pragma once

#include <cstdint>

#include "platform/SmcKeyTable.h"

namespace corvane {

// The commands of an exchange.
inline constexpr std::uint8_t readCommand = 5;
inline constexpr std::uint8_t writeCommand = 6;
inline constexpr std::uint8_t keyAtIndexCommand = 8;

// Types of keys, and a key, as four characters in a number.
inline constexpr std::uint32_t flt = fourCharCode("flt ");
inline constexpr std::uint32_t ui8 = fourCharCode("ui8 ");
inline constexpr std::uint32_t fpe2 = fourCharCode("fpe2");
inline constexpr std::uint32_t fNum = 0x464E756D;

/// A failure of the platform: kIOReturnNotPrivileged and its like are negative as 32-bit integers.
inline constexpr auto platformCode = static_cast<std::int32_t>(0xE00002C1);

}  // namespace corvane
