#include "platform/linux/desktop/ThermalZones.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "platform/linux/desktop/SysfsNumber.h"

namespace corvane {

namespace {

/// m°C, as everything below.
using Temperature = std::int64_t;

constexpr Temperature hysteresis = 3'000;
constexpr Temperature marginToCritical = 5'000;
constexpr Temperature lowestTrip = 40'000;
constexpr Temperature tooHotToBeTrue = 200'000;

/// Far more than any computer has; the kernel itself allows 12 trips.
constexpr std::size_t maxZones = 128;
constexpr std::size_t maxCoolingDevices = 1024;
constexpr int maxTrips = 16;

constexpr std::string_view folder = "class/thermal";

/// Where the states begin; none where a zone does not tell.
struct Thresholds {
    std::optional<Temperature> fair;
    std::optional<Temperature> serious;
    std::optional<Temperature> critical;
};

void lower(std::optional<Temperature>& lowest, Temperature temperature) {
    lowest = std::min(lowest.value_or(temperature), temperature);
}

Thresholds readThresholds(Sysfs& sysfs, const std::string& zone) {
    std::optional<Temperature> passive;
    std::optional<Temperature> hot;
    std::optional<Temperature> critical;
    for (int trip = 0; trip < maxTrips; ++trip) {
        const auto type = readText(sysfs, fmt::format("{}/{}/trip_point_{}_type", folder, zone, trip));
        if (type.empty()) {
            break;
        }
        const auto at = readNumber(sysfs, fmt::format("{}/{}/trip_point_{}_temp", folder, zone, trip));
        if (!at || *at < lowestTrip || *at >= tooHotToBeTrue) {
            continue;
        }
        if (type == "passive") {
            lower(passive, *at);
        } else if (type == "hot") {
            lower(hot, *at);
        } else if (type == "critical") {
            lower(critical, *at);
        }
    }
    Thresholds thresholds{.fair = passive, .serious = hot, .critical = std::nullopt};
    if (!hot && passive && critical) {
        thresholds.serious = (*passive + *critical) / 2;
    }
    if (critical) {
        thresholds.critical = *critical - marginToCritical;
    }
    return thresholds;
}

ThermalState levelAt(Temperature temperature, const Thresholds& thresholds, ThermalState before) {
    const auto has = [&](std::optional<Temperature> threshold, ThermalState level) {
        return threshold && temperature >= *threshold - (level <= before ? hysteresis : 0);
    };
    if (has(thresholds.critical, ThermalState::critical)) {
        return ThermalState::critical;
    }
    if (has(thresholds.serious, ThermalState::serious)) {
        return ThermalState::serious;
    }
    return has(thresholds.fair, ThermalState::fair) ? ThermalState::fair : ThermalState::nominal;
}

/// The kernel's names for what slows a processor down or makes it rest, over the years.
bool slowsProcessor(std::string_view type) {
    constexpr std::array prefixes = {"cpufreq-", "thermal-cpufreq-", "cpuidle-", "thermal-idle-"};
    return type == "Processor" || type == "intel_powerclamp" ||
           std::ranges::any_of(prefixes, [&](const char* prefix) { return type.starts_with(prefix); });
}

std::vector<std::string> startingWith(std::string_view prefix, const std::vector<std::string>& names,
                                      std::size_t most) {
    std::vector<std::string> found;
    for (const std::string& name : names) {
        if (found.size() < most && name.starts_with(prefix)) {
            found.push_back(name);
        }
    }
    return found;
}

}  // namespace

ThermalZones::ThermalZones(std::string root) : sysfs_(std::move(root)) {}

ThermalState ThermalZones::read() {
    const std::vector<std::string> names = sysfs_.list(std::string(folder));
    auto hottest = isProcessorSlowed(names) ? ThermalState::fair : ThermalState::nominal;
    std::map<std::string, ThermalState> levels;
    for (const std::string& zone : startingWith("thermal_zone", names, maxZones)) {
        const auto temperature = readNumber(sysfs_, fmt::format("{}/{}/temp", folder, zone));
        if (!temperature || *temperature <= 0 || *temperature >= tooHotToBeTrue) {
            continue;
        }
        const auto before = levels_.find(zone);
        const ThermalState level = levelAt(*temperature, readThresholds(sysfs_, zone),
                                           before == levels_.end() ? ThermalState::nominal : before->second);
        levels.emplace(zone, level);
        hottest = std::max(hottest, level);
    }
    levels_ = std::move(levels);
    return hottest;
}

bool ThermalZones::isProcessorSlowed(const std::vector<std::string>& names) {
    const auto devices = startingWith("cooling_device", names, maxCoolingDevices);
    return std::ranges::any_of(devices, [&](const std::string& device) {
        // An idle one may tell -1.
        return slowsProcessor(readText(sysfs_, fmt::format("{}/{}/type", folder, device))) &&
               readNumber(sysfs_, fmt::format("{}/{}/cur_state", folder, device)).value_or(0) > 0;
    });
}

}  // namespace corvane
