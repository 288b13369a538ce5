#include "platform/linux/hwmon/TemperatureFamily.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

/// Drivers of sensors inside the processor.
constexpr std::array<std::string_view, 5> cpuChips = {"coretemp", "k10temp", "k8temp", "zenpower",
                                                      "via_cputemp"};
constexpr std::array<std::string_view, 5> graphicsChips = {"amdgpu", "radeon", "nouveau", "i915", "xe"};
/// Beginnings of the names of ARM thermal zones, such as "cpu_thermal" and "bigcore0_thermal".
constexpr std::array<std::string_view, 5> cpuZones = {"cpu", "bigcore", "littlecore", "cluster", "soc"};

template <std::size_t count>
bool contains(const std::array<std::string_view, count>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isZoneOf(std::string_view chip, std::string_view beginning) {
    return chip.starts_with(beginning) && chip.find("thermal") != std::string_view::npos;
}

bool isCpuZone(std::string_view chip) {
    return std::any_of(cpuZones.begin(), cpuZones.end(),
                       [chip](std::string_view zone) { return isZoneOf(chip, zone); });
}

/// Chips whose sensors lie all over the machine tell by their labels.
TemperatureFamily familyOfLabel(std::string_view label, std::string_view cpu, std::string_view gpu) {
    if (label.starts_with(cpu)) {
        return TemperatureFamily::cpu;
    }
    return label.starts_with(gpu) ? TemperatureFamily::gpu : TemperatureFamily::other;
}

}  // namespace

TemperatureFamily temperatureFamilyOf(std::string_view chip, std::string_view label) {
    if (chip == "applesmc") {
        return familyOfLabel(label, "TC", "TG");
    }
    if (chip == "thinkpad") {
        return familyOfLabel(label, "CPU", "GPU");
    }
    if (contains(cpuChips, chip) || isCpuZone(chip)) {
        return TemperatureFamily::cpu;
    }
    return isGraphicsCard(chip) || isZoneOf(chip, "gpu") ? TemperatureFamily::gpu : TemperatureFamily::other;
}

bool isGraphicsCard(std::string_view chip) {
    return contains(graphicsChips, chip);
}

}  // namespace corvane
