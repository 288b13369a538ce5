#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/hwmon/FanDriver.h"
#include "platform/linux/hwmon/FanOwner.h"
#include "platform/linux/hwmon/HwmonChip.h"

namespace corvane {

/// A fan by what stays the same across driver reloads and hwmon numbers.
struct FanIdentity {
    ChipIdentity chip;
    /// The N of its fanN attributes.
    int channel = 0;

    bool operator==(const FanIdentity&) const = default;
};

/// A fan that is not with its firmware, and what has to be restored.
struct JournalEntry {
    FanIdentity fan;
    FanOwner owner = FanOwner::helper;
    FanOriginals originals;

    bool operator==(const JournalEntry&) const = default;
};

/// One line without its end: tab-separated fields, the last of which shows that nothing was cut off.
[[nodiscard]] std::string formatJournalEntry(const JournalEntry& entry);

/// Nothing for a line that `formatJournalEntry` cannot have written.
[[nodiscard]] std::optional<JournalEntry> parseJournalEntry(std::string_view line);

}  // namespace corvane
