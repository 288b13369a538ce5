#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace corvane {

/// The text with "." for every character that is not printable ASCII: controllers may hold anything, and
/// terminals obey control characters.
std::string printable(std::string_view text);

/// The four characters of a packed type or key, `printable`.
std::string fourCharText(std::uint32_t code);

/// A value for people to read, by its type:
/// `flt ` (little-endian), `fpXY` and `spXY` (two bytes, big-endian, Y fraction bits) and `ioft` (eight
/// bytes, little-endian, 16 fraction bits) with two decimals; `ui..` and `si..` as whole numbers, in the byte
/// order the attributes tell; `flag` as "true" or "false"; `ch8*` as text. "-" for any other type and for a
/// length that is not the type's.
std::string decodeValue(std::uint32_t type, std::uint8_t attributes, std::span<const std::uint8_t> bytes);

}  // namespace corvane
