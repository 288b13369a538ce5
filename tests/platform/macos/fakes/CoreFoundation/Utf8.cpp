#include "tests/platform/macos/fakes/CoreFoundation/Utf8.h"

#include <bit>
#include <cstdint>

namespace corvane {

namespace {

/// Takes one character off the front.
std::optional<std::uint32_t> takeCharacter(std::string_view& text) {
    const auto first = static_cast<std::uint8_t>(text.front());
    // 0 for a character of one byte, otherwise the bytes it has.
    const auto ones = static_cast<std::size_t>(std::countl_one(first));
    const std::size_t size = ones == 0 ? 1 : ones;
    if (ones == 1 || size > 4 || size > text.size()) {
        return std::nullopt;
    }
    std::uint32_t character = first & (0xFFU >> (ones + 1));
    for (const char next : text.substr(1, size - 1)) {
        const auto byte = static_cast<std::uint8_t>(next);
        if ((byte & 0xC0U) != 0x80U) {
            return std::nullopt;
        }
        character = character << 6U | (byte & 0x3FU);
    }
    constexpr std::uint32_t leastOfSize[] = {0, 0, 0x80, 0x800, 0x10000};
    if (character < leastOfSize[size]) {
        return std::nullopt;
    }
    text.remove_prefix(size);
    return character;
}

}  // namespace

std::optional<std::size_t> utf16LengthOf(std::string_view text) {
    std::size_t length = 0;
    while (!text.empty()) {
        const std::optional<std::uint32_t> character = takeCharacter(text);
        if (!character || *character > 0x10FFFF || (*character >= 0xD800 && *character < 0xE000)) {
            return std::nullopt;
        }
        length += *character < 0x10000 ? 1U : 2U;
    }
    return length;
}

}  // namespace corvane
