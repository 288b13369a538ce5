#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/hwmon/ChipAttribute.h"
#include "platform/linux/hwmon/HwmonChip.h"

namespace corvane {

/// The value of an attribute; nothing when it cannot be read or is not a whole number. Waits as long as the
/// driver does, some milliseconds as a rule.
[[nodiscard]] inline std::optional<std::int64_t> readNumber(Sysfs& sysfs, const std::string& path) {
    return parseNumber(readText(sysfs, path));
}

}  // namespace corvane
