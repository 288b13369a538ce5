#include "platform/linux/desktop/SysfsPowerSupplies.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

#include <fmt/format.h>

#include "platform/linux/desktop/SysfsNumber.h"
#include "platform/linux/hwmon/DirectorySysfs.h"

namespace corvane {

namespace {

/// Far more than any computer has.
constexpr std::size_t maxSupplies = 64;

struct Battery {
    std::string folder;
    /// One of the kernel's words; empty when it cannot be read.
    std::string status;
};

struct Charge {
    int now;
    int full;
};

struct Supplies {
    std::vector<Battery> batteries;
    bool hasAdapter = false;
    bool isAdapterOnline = false;

    [[nodiscard]] bool anyBatteryIs(std::string_view word) const {
        return std::ranges::any_of(batteries, [&](const Battery& battery) { return battery.status == word; });
    }

    [[nodiscard]] bool drawFromMains() const {
        if (isAdapterOnline) {
            return true;
        }
        if (anyBatteryIs("Discharging")) {
            return false;
        }
        return anyBatteryIs("Charging") ||
               (!hasAdapter && (anyBatteryIs("Full") || anyBatteryIs("Not charging")));
    }
};

/// "USB" has had several kinds, such as "USB_PD".
bool isAdapter(std::string_view type) {
    return type == "Mains" || type.starts_with("USB") || type == "Wireless";
}

Supplies readSupplies(Sysfs& sysfs) {
    Supplies supplies;
    auto names = sysfs.list("class/power_supply");
    names.resize(std::min(names.size(), maxSupplies));
    for (const std::string& name : names) {
        const std::string folder = fmt::format("class/power_supply/{}", name);
        const std::string type = readText(sysfs, folder + "/type");
        if (readText(sysfs, folder + "/scope") == "Device") {
            continue;
        }
        if (isAdapter(type)) {
            supplies.hasAdapter = true;
            // 2 is online, too: at a voltage that was negotiated.
            supplies.isAdapterOnline |= readNumber(sysfs, folder + "/online").value_or(0) > 0;
        } else if (type == "Battery" && readNumber(sysfs, folder + "/present") != 0) {
            supplies.batteries.push_back({folder, readText(sysfs, folder + "/status")});
        }
    }
    return supplies;
}

std::optional<Charge> plausible(std::optional<std::int64_t> now, std::optional<std::int64_t> full) {
    constexpr std::int64_t largest = std::numeric_limits<int>::max();
    if (!now || !full || *full < 1 || *full > largest || *now < 0 || *now > largest || *now / 2 > *full) {
        return std::nullopt;
    }
    return Charge{static_cast<int>(*now), static_cast<int>(*full)};
}

std::optional<Charge> readCharge(Sysfs& sysfs, const std::string& folder) {
    for (const char* unit : {"energy", "charge"}) {
        const auto charge = plausible(readNumber(sysfs, fmt::format("{}/{}_now", folder, unit)),
                                      readNumber(sysfs, fmt::format("{}/{}_full", folder, unit)));
        if (charge) {
            return charge;
        }
    }
    return plausible(readNumber(sysfs, folder + "/capacity"), 100);
}

/// None for a battery that tells nothing: it is just being taken out.
std::optional<PowerSourceDescription> describe(Sysfs& sysfs, const Battery& battery, bool drawsFromMains) {
    const auto charge = readCharge(sysfs, battery.folder);
    if (!charge && battery.status.empty()) {
        return std::nullopt;
    }
    PowerSourceDescription description;
    if (charge) {
        description.currentCapacity = charge->now;
        description.maxCapacity = charge->full;
    }
    description.state = drawsFromMains ? PowerSources::acPower : "Battery Power";
    if (!battery.status.empty()) {
        description.isCharging = battery.status == "Charging";
    }
    return description;
}

}  // namespace

std::vector<std::optional<PowerSourceDescription>> SysfsPowerSupplies::descriptions() const {
    DirectorySysfs sysfs(root_);
    const Supplies supplies = readSupplies(sysfs);
    const bool drawsFromMains = supplies.drawFromMains();
    std::vector<std::optional<PowerSourceDescription>> descriptions;
    descriptions.reserve(supplies.batteries.size());
    for (const Battery& battery : supplies.batteries) {
        descriptions.push_back(describe(sysfs, battery, drawsFromMains));
    }
    return descriptions;
}

}  // namespace corvane
