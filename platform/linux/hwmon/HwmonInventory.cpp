#include "platform/linux/hwmon/HwmonInventory.h"

#include <algorithm>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "platform/linux/hwmon/AppleSmcFan.h"
#include "platform/linux/hwmon/AttributeName.h"
#include "platform/linux/hwmon/FanSpeed.h"
#include "platform/linux/hwmon/MacSmcFan.h"
#include "platform/linux/hwmon/PwmFan.h"

namespace corvane {

namespace {

constexpr std::string_view appleSiliconChip = "macsmc_hwmon";
constexpr std::string_view intelMacChip = "applesmc";

/// A fan before it is known which ones are offered.
struct FoundFan {
    HwmonChip* chip;
    int channel;
    SpeedRange range;
    std::unique_ptr<FanDriver> driver;
};

std::vector<int> channels(const HwmonChip& chip, std::string_view prefix) {
    std::vector<int> found;
    for (const std::string& name : chip.attributeNames()) {
        if (const std::optional<int> channel = channelOf(name, prefix, "_input")) {
            found.push_back(*channel);
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::int64_t valueNow(HwmonChip& chip, std::string name) {
    ChipAttribute attribute(chip, std::move(name), SysfsAccess::read);
    return attribute.isOpen() ? attribute.read().value_or(0) : 0;
}

/// Unknown unless the driver's limits make sense.
SpeedRange limitsOf(HwmonChip& chip, int channel) {
    const std::int64_t min = valueNow(chip, fmt::format("fan{}_min", channel));
    const std::int64_t max = valueNow(chip, fmt::format("fan{}_max", channel));
    const bool isSane = min >= 0 && min < max && max <= FanSpeed::highest;
    return isSane ? SpeedRange{static_cast<float>(min), static_cast<float>(max)} : SpeedRange{};
}

SpeedRange nominalRange(HwmonChip& chip, int channel) {
    const std::int64_t speed = valueNow(chip, fmt::format("fan{}_input", channel));
    const bool isSane = speed >= 0 && speed <= FanSpeed::highest;
    return {0.0F, std::max(HwmonInventory::nominalMax, isSane ? static_cast<float>(speed) : 0.0F)};
}

/// A journal entry must mean one fan only: chips that cannot be told apart are not driven.
bool isUnique(const HwmonInventory& inventory, const HwmonChip& chip) {
    return std::count_if(inventory.chips.begin(), inventory.chips.end(),
                         [&](const auto& other) { return other->identity() == chip.identity(); }) == 1;
}

std::vector<FoundFan> findFans(const HwmonInventory& inventory) {
    std::vector<FoundFan> fans;
    for (const auto& chip : inventory.chips) {
        if (isGraphicsCard(chip->identity().name)) {
            continue;
        }
        for (const int channel : channels(*chip, "fan")) {
            auto driver = isUnique(inventory, *chip) ? makeFanDriver(*chip, channel) : nullptr;
            const SpeedRange range = driver == nullptr ? limitsOf(*chip, channel) : driver->range();
            fans.push_back({chip.get(), channel, range, std::move(driver)});
        }
    }
    return fans;
}

/// Keeps the fans that can be driven where there are too many.
void limitCount(std::vector<FoundFan>& fans) {
    while (fans.size() > HwmonInventory::maxFans) {
        const auto watched = std::find_if(fans.rbegin(), fans.rend(),
                                          [](const FoundFan& fan) { return fan.driver == nullptr; });
        fans.erase(watched == fans.rend() ? fans.end() - 1 : watched.base() - 1);
    }
}

std::optional<ChipAttribute> readable(HwmonChip& chip, std::string name) {
    ChipAttribute attribute(chip, std::move(name), SysfsAccess::read);
    return attribute.isOpen() ? std::optional(std::move(attribute)) : std::nullopt;
}

std::optional<ChipAttribute> firmwareTargetOf(HwmonChip& chip, int channel) {
    const std::string_view suffix = chip.identity().name == intelMacChip ? "output" : "target";
    return readable(chip, fmt::format("fan{}_{}", channel, suffix));
}

std::optional<ChipAttribute> modeOf(HwmonChip& chip, int channel) {
    const bool isIntelMac = chip.identity().name == intelMacChip;
    return readable(chip,
                    isIntelMac ? fmt::format("fan{}_manual", channel) : fmt::format("pwm{}_enable", channel));
}

void findSensors(HwmonInventory& inventory) {
    for (const auto& chip : inventory.chips) {
        for (const int channel : channels(*chip, "temp")) {
            const std::string label = chip->text(fmt::format("temp{}_label", channel));
            const TemperatureFamily family = temperatureFamilyOf(chip->identity().name, label);
            if (family != TemperatureFamily::other) {
                inventory.sensors.push_back(std::make_unique<HwmonSensor>(HwmonSensor{
                    family, ChipAttribute(*chip, fmt::format("temp{}_input", channel), SysfsAccess::read)}));
            }
        }
    }
}

/// They were listed: a lack of file descriptors, for example, must not pass for a lack of sensors.
void reportClosed(const HwmonInventory& inventory, Log& log) {
    const auto isClosedSensor = [](const auto& sensor) { return !sensor->input.isOpen(); };
    const auto isClosedFan = [](const auto& fan) { return !fan->speed.isOpen(); };
    const auto sensors = std::count_if(inventory.sensors.begin(), inventory.sensors.end(), isClosedSensor);
    const auto fans = std::count_if(inventory.fans.begin(), inventory.fans.end(), isClosedFan);
    if (sensors > 0 || fans > 0) {
        log.write(
            fmt::format("Corvane daemon: cannot open {} of {} sensors and {} of {} fans that are listed",
                        sensors, inventory.sensors.size(), fans, inventory.fans.size()));
    }
}

}  // namespace

std::unique_ptr<FanDriver> makeFanDriver(HwmonChip& chip, int channel) {
    const SpeedRange limits = limitsOf(chip, channel);
    if (chip.identity().name == appleSiliconChip) {
        return MacSmcFan::make(chip, channel, limits);
    }
    if (chip.identity().name == intelMacChip) {
        return AppleSmcFan::make(chip, channel, limits);
    }
    return PwmFan::make(chip, channel, limits.isKnown() ? limits : nominalRange(chip, channel));
}

HwmonInventory takeInventory(Sysfs& sysfs, const SerialQueue* clock, FanOwner owner, FanJournal& journal,
                             Log& log) {
    HwmonInventory inventory;
    for (ChipLocation& location : scanChips(sysfs)) {
        inventory.chips.push_back(std::make_unique<HwmonChip>(sysfs, clock, std::move(location)));
    }
    std::vector<FoundFan> fans = findFans(inventory);
    limitCount(fans);
    for (FoundFan& fan : fans) {
        const FanIdentity identity{fan.chip->identity(), fan.channel};
        std::string name =
            fmt::format("fan {} ({} fan{})", inventory.fans.size(), identity.chip.name, identity.channel);
        inventory.fans.push_back(std::make_unique<HwmonFan>(
            HwmonFan{ChipAttribute(*fan.chip, fmt::format("fan{}_input", fan.channel), SysfsAccess::read),
                     firmwareTargetOf(*fan.chip, fan.channel), modeOf(*fan.chip, fan.channel), fan.range,
                     FanCustody({std::move(name), identity, owner}, std::move(fan.driver), journal, log)}));
    }
    findSensors(inventory);
    reportClosed(inventory, log);
    return inventory;
}

}  // namespace corvane
