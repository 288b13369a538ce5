#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/hwmon/HwmonChip.h"

namespace corvane {

/// A numeric attribute of a chip, kept open. One system call per `read` and `write`; neither allocates as
/// long as the chip stays where it is. When the chip is gone the call fails, and a later one looks for it
/// anew.
class ChipAttribute {
public:
    /// `chip` outlives the attribute.
    ChipAttribute(HwmonChip& chip, std::string name, SysfsAccess access);

    /// Whether the attribute is there and may be used as asked for.
    [[nodiscard]] bool isOpen() const { return handle_ != nullptr; }

    /// The value as the driver gives it; nothing when it cannot be read or is not a whole number.
    [[nodiscard]] std::optional<std::int64_t> read();

    /// True when the driver took the value.
    [[nodiscard]] bool write(std::int64_t value);

private:
    [[nodiscard]] bool ensureOpen();
    void drop(int error);

    HwmonChip& chip_;
    std::string name_;
    SysfsAccess access_;
    std::unique_ptr<SysfsAttribute> handle_;
    unsigned openedAt_;
};

/// A whole number in the way drivers print it: optional minus, digits, optional line end. Nothing for any
/// other text, nor for numbers beyond 64 bits.
[[nodiscard]] std::optional<std::int64_t> parseNumber(std::string_view text);

}  // namespace corvane
