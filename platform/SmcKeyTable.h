#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/SmcConnection.h"

namespace corvane {

/// Packs up to four characters the way keys and types are packed; shorter texts end in NULs.
constexpr std::uint32_t fourCharCode(std::string_view text) {
    std::uint32_t code = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        code = code << 8 | (i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0U);
    }
    return code;
}

/// Attribute bits of a key.
namespace SmcAttribute {
inline constexpr std::uint8_t readable = 0x80;
inline constexpr std::uint8_t writable = 0x40;
inline constexpr std::uint8_t function = 0x10;
inline constexpr std::uint8_t littleEndian = 0x04;
}  // namespace SmcAttribute

/// A key as a controller declares it.
struct SmcKey {
    std::uint32_t name = 0;
    std::uint32_t type = 0;
    /// Bytes of its value, 1...32.
    std::uint8_t size = 0;
    std::uint8_t attributes = 0;
};

/// A table of keys with values behind it: what a stand-in for the controller has to provide. Sizes and
/// attributes are checked before `read` and `write` are reached.
class SmcKeyTable {
public:
    SmcKeyTable() = default;
    SmcKeyTable(const SmcKeyTable&) = delete;
    SmcKeyTable& operator=(const SmcKeyTable&) = delete;
    virtual ~SmcKeyTable() = default;

    /// Ascending by name, without duplicates, as controllers list them.
    [[nodiscard]] virtual std::span<const SmcKey> keys() const = 0;

    /// Fills `bytes`, of the key's size. `index` is into `keys`.
    virtual SmcResult read(std::size_t index, std::span<std::uint8_t> bytes) = 0;

    /// Takes `bytes`, of the key's size.
    virtual SmcResult write(std::size_t index, std::span<const std::uint8_t> bytes) = 0;
};

/// Answers one record from a key table by the controller's own rules. Does not allocate.
void answerFromTable(SmcKeyTable& table, SmcRecord& record);

}  // namespace corvane
