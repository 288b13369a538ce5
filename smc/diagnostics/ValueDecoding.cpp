#include "smc/diagnostics/ValueDecoding.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <optional>

#include <fmt/format.h>

#include "platform/SmcKeyTable.h"

namespace corvane {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr int ioftFractionBits = 16;

std::uint64_t bigEndian(Bytes bytes) {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : bytes) {
        value = value << 8U | byte;
    }
    return value;
}

std::uint64_t littleEndian(Bytes bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        value = value << 8U | bytes[i];
    }
    return value;
}

/// The lowest `8 * size` bits, of which the highest is the sign. `size` is 1...8.
std::int64_t withSign(std::uint64_t value, std::size_t size) {
    const std::size_t unused = 64 - 8 * size;
    return static_cast<std::int64_t>(value << unused) >> unused;
}

std::string decimals(double value) {
    return fmt::format("{:.2f}", value);
}

std::optional<int> hexDigit(char digit) {
    constexpr std::string_view digits = "0123456789abcdef";
    const std::size_t value = digits.find(digit);
    return value == std::string_view::npos ? std::nullopt : std::optional(static_cast<int>(value));
}

std::string wholeNumber(bool isSigned, bool isLittle, Bytes bytes) {
    const std::uint64_t value = isLittle ? littleEndian(bytes) : bigEndian(bytes);
    return isSigned ? fmt::format("{}", withSign(value, bytes.size())) : fmt::format("{}", value);
}

/// True for a type that begins with `prefix` and goes on with the number of bits in `bytes`.
bool isInteger(std::string_view type, std::string_view prefix, Bytes bytes) {
    return (bytes.size() == 1 || bytes.size() == 2 || bytes.size() == 4 || bytes.size() == 8) &&
           type == fmt::format("{}{:<2}", prefix, 8 * bytes.size());
}

std::optional<int> fractionBits(std::string_view type, std::string_view prefix, Bytes bytes) {
    return type.starts_with(prefix) && bytes.size() == 2 ? hexDigit(type[3]) : std::nullopt;
}

std::string decode(std::string_view type, bool isLittle, Bytes bytes) {
    if (type == "flt " && bytes.size() == 4) {
        const auto bits = static_cast<std::uint32_t>(littleEndian(bytes));
        return decimals(static_cast<double>(std::bit_cast<float>(bits)));
    }
    if (type == "ioft" && bytes.size() == 8) {
        return decimals(std::ldexp(static_cast<double>(withSign(littleEndian(bytes), 8)), -ioftFractionBits));
    }
    if (const std::optional<int> bits = fractionBits(type, "fp", bytes)) {
        return decimals(std::ldexp(static_cast<double>(bigEndian(bytes)), -*bits));
    }
    if (const std::optional<int> bits = fractionBits(type, "sp", bytes)) {
        return decimals(std::ldexp(static_cast<double>(withSign(bigEndian(bytes), 2)), -*bits));
    }
    if (isInteger(type, "ui", bytes)) {
        return wholeNumber(false, isLittle, bytes);
    }
    if (isInteger(type, "si", bytes)) {
        return wholeNumber(true, isLittle, bytes);
    }
    if (type == "flag" && bytes.size() == 1) {
        return bytes[0] != 0 ? "true" : "false";
    }
    if (type == "ch8*") {
        const std::string text(bytes.begin(), std::ranges::find(bytes, std::uint8_t{0}));
        return '"' + printable(text) + '"';
    }
    return "-";
}

}  // namespace

std::string printable(std::string_view text) {
    std::string result(text);
    std::ranges::replace_if(
        result, [](char c) { return c < ' ' || c > '~'; }, '.');
    return result;
}

std::string fourCharText(std::uint32_t code) {
    const std::array<char, 4> letters{static_cast<char>(code >> 24U), static_cast<char>(code >> 16U),
                                      static_cast<char>(code >> 8U), static_cast<char>(code)};
    return printable({letters.data(), letters.size()});
}

std::string decodeValue(std::uint32_t type, std::uint8_t attributes, std::span<const std::uint8_t> bytes) {
    return decode(fourCharText(type), (attributes & SmcAttribute::littleEndian) != 0, bytes);
}

}  // namespace corvane
