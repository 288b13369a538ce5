#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SerialQueue.h"
#include "platform/linux/hwmon/Sysfs.h"

namespace corvane {

/// What stays the same about a chip while drivers come and go and hwmon numbers change.
struct ChipIdentity {
    /// Path of its device in the tree, for example "devices/platform/nct6775.656".
    std::string device;
    /// Name its driver gives it, for example "nct6775".
    std::string name;

    bool operator==(const ChipIdentity&) const = default;
};

/// A chip where it was found.
struct ChipLocation {
    ChipIdentity identity;
    /// The directory that holds its attributes; empty while the chip is gone.
    std::string directory;
};

/// Every hwmon chip, ordered by identity.
[[nodiscard]] std::vector<ChipLocation> scanChips(Sysfs& sysfs);

/// Text of an attribute without surrounding blanks; empty when it cannot be read or is too long for a name.
[[nodiscard]] std::string readText(Sysfs& sysfs, const std::string& path);

/// One chip, found again by its identity when its driver was reloaded. One thread.
class HwmonChip {
public:
    /// A chip that vanished is looked for no more often than this.
    static constexpr Duration lookupInterval = std::chrono::seconds(3);

    /// `sysfs` and `clock` outlive the chip. Without a clock (null) nothing limits how often it is looked
    /// for.
    HwmonChip(Sysfs& sysfs, const SerialQueue* clock, ChipLocation location);

    [[nodiscard]] const ChipIdentity& identity() const { return location_.identity; }

    /// Names of its attributes, ascending.
    [[nodiscard]] std::vector<std::string> attributeNames() const;
    [[nodiscard]] std::string text(std::string_view attribute) const;
    /// `attribute` may be a path relative to the chip's directory.
    [[nodiscard]] std::unique_ptr<SysfsAttribute> open(std::string_view attribute, SysfsAccess access) const;

    /// Grows each time the chip was looked for.
    [[nodiscard]] unsigned lookups() const { return lookups_; }

    /// Looks for the chip unless it was just looked for; true when it did.
    bool lookUp();

private:
    [[nodiscard]] std::string pathOf(std::string_view attribute) const;

    Sysfs& sysfs_;
    const SerialQueue* clock_;
    ChipLocation location_;
    unsigned lookups_ = 0;
    std::optional<BootTime> lastLookup_;
};

}  // namespace corvane
