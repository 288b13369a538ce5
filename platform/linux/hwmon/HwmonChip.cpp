#include "platform/linux/hwmon/HwmonChip.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "platform/linux/hwmon/AttributeName.h"

namespace corvane {

namespace {

constexpr std::string_view classDirectory = "class/hwmon";
constexpr std::size_t maxText = 64;
constexpr std::string_view blanks = " \t\r\n";

bool isHwmonName(std::string_view name) {
    constexpr std::string_view prefix = "hwmon";
    return name.size() > prefix.size() && name.starts_with(prefix) &&
           name.find_first_not_of("0123456789", prefix.size()) == std::string_view::npos;
}

/// The journal keeps identities as text, one per line.
bool isPrintable(std::string_view text) {
    return !text.empty() && std::none_of(text.begin(), text.end(), [](char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
    });
}

/// "devices/x/hwmon/hwmon3" and "devices/x/hwmon3" both belong to "devices/x".
std::string withoutHwmonFolders(std::string path) {
    for (const bool isLast : {true, false}) {
        const std::size_t slash = path.rfind('/');
        const std::string_view folder = std::string_view(path).substr(slash + 1);
        if (slash != std::string::npos && (isLast ? isHwmonName(folder) : folder == "hwmon")) {
            path.resize(slash);
        }
    }
    return path;
}

std::optional<std::string> deviceOf(Sysfs& sysfs, const std::string& hwmon) {
    if (std::optional<std::string> device = sysfs.canonicalPath(hwmon + "/device")) {
        return device;
    }
    std::optional<std::string> own = sysfs.canonicalPath(hwmon);
    return own ? std::optional(withoutHwmonFolders(std::move(*own))) : std::nullopt;
}

bool hasChannels(Sysfs& sysfs, const std::string& directory) {
    const std::vector<std::string> names = sysfs.list(directory);
    return std::any_of(names.begin(), names.end(), [](const std::string& name) {
        return channelOf(name, "fan", "_input") || channelOf(name, "temp", "_input");
    });
}

std::optional<ChipLocation> locate(Sysfs& sysfs, const std::string& hwmon) {
    const std::string parent = hwmon + "/device";
    std::string name = readText(sysfs, hwmon + "/name");
    if (name.empty()) {
        name = readText(sysfs, parent + "/name");
    }
    std::optional<std::string> device = deviceOf(sysfs, hwmon);
    if (!device || !isPrintable(*device) || !isPrintable(name)) {
        return std::nullopt;
    }
    // Older drivers, applesmc among them, keep everything with the parent device.
    const bool isOnParent = !hasChannels(sysfs, hwmon) && hasChannels(sysfs, parent);
    return ChipLocation{{std::move(*device), std::move(name)}, isOnParent ? parent : hwmon};
}

}  // namespace

std::vector<ChipLocation> scanChips(Sysfs& sysfs) {
    std::vector<ChipLocation> chips;
    for (const std::string& name : sysfs.list(std::string(classDirectory))) {
        if (!isHwmonName(name)) {
            continue;
        }
        if (std::optional<ChipLocation> chip = locate(sysfs, std::string(classDirectory) + "/" + name)) {
            chips.push_back(std::move(*chip));
        }
    }
    std::stable_sort(chips.begin(), chips.end(), [](const ChipLocation& left, const ChipLocation& right) {
        return std::tie(left.identity.device, left.identity.name) <
               std::tie(right.identity.device, right.identity.name);
    });
    return chips;
}

std::string readText(Sysfs& sysfs, const std::string& path) {
    const std::unique_ptr<SysfsAttribute> attribute = sysfs.open(path, SysfsAccess::read);
    std::array<char, maxText + 1> buffer = {};
    const int count = attribute == nullptr ? 0 : attribute->read(buffer);
    if (count <= 0 || static_cast<std::size_t>(count) > maxText) {
        return {};
    }
    const std::string_view text(buffer.data(), static_cast<std::size_t>(count));
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return std::string(text.substr(first, text.find_last_not_of(blanks) + 1 - first));
}

HwmonChip::HwmonChip(Sysfs& sysfs, const SerialQueue* clock, ChipLocation location)
    : sysfs_(sysfs), clock_(clock), location_(std::move(location)) {}

std::vector<std::string> HwmonChip::attributeNames() const {
    return sysfs_.list(location_.directory);
}

std::string HwmonChip::text(std::string_view attribute) const {
    return readText(sysfs_, pathOf(attribute));
}

std::unique_ptr<SysfsAttribute> HwmonChip::open(std::string_view attribute, SysfsAccess access) const {
    // Another chip may have got the number of one that is gone.
    return location_.directory.empty() ? nullptr : sysfs_.open(pathOf(attribute), access);
}

bool HwmonChip::lookUp() {
    if (clock_ != nullptr) {
        const BootTime now = clock_->bootTime();
        if (lastLookup_ && now - *lastLookup_ < lookupInterval) {
            return false;
        }
        lastLookup_ = now;
    }
    ++lookups_;
    const std::vector<ChipLocation> chips = scanChips(sysfs_);
    const auto isThis = [this](const ChipLocation& chip) { return chip.identity == location_.identity; };
    const auto found = std::find_if(chips.begin(), chips.end(), isThis);
    location_.directory = found == chips.end() ? std::string() : found->directory;
    return true;
}

std::string HwmonChip::pathOf(std::string_view attribute) const {
    return location_.directory + "/" + std::string(attribute);
}

}  // namespace corvane
