#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/linux/hwmon/ChipAttribute.h"
#include "platform/linux/hwmon/FanCustody.h"
#include "platform/linux/hwmon/HwmonChip.h"
#include "platform/linux/hwmon/TemperatureFamily.h"

namespace corvane {

/// A fan as it is offered.
struct HwmonFan {
    ChipAttribute speed;
    /// Where the chip tells what the firmware aims at.
    std::optional<ChipAttribute> firmwareTarget;
    /// Where the chip tells who sets the speed: 1 is manual control.
    std::optional<ChipAttribute> mode;
    SpeedRange range;
    FanCustody custody;
};

/// A temperature sensor that bears on safety.
struct HwmonSensor {
    TemperatureFamily family;
    ChipAttribute input;
};

/// What there is on this machine, in an order that does not depend on hwmon numbers: by device path, then by
/// channel.
struct HwmonInventory {
    /// Key names have room for one digit.
    static constexpr std::size_t maxFans = 10;
    /// A maximum for fans whose driver tells none, in RPM: common for case and processor fans. A fan that is
    /// found turning faster has that speed as its maximum.
    static constexpr float nominalMax = 3000.0F;

    std::vector<std::unique_ptr<HwmonChip>> chips;
    std::vector<std::unique_ptr<HwmonFan>> fans;
    std::vector<std::unique_ptr<HwmonSensor>> sensors;
};

/// The way to drive fan `channel` of `chip`, which outlives it; null for a fan that can only be watched.
[[nodiscard]] std::unique_ptr<FanDriver> makeFanDriver(HwmonChip& chip, int channel);

/// All arguments outlive the inventory; `clock` may be null.
[[nodiscard]] HwmonInventory takeInventory(Sysfs& sysfs, const SerialQueue* clock, FanOwner owner,
                                           FanJournal& journal, Log& log);

}  // namespace corvane
