#include "platform/linux/hwmon/MacSmcFan.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "platform/linux/hwmon/FanSpeed.h"

namespace corvane {

std::unique_ptr<FanDriver> MacSmcFan::make(HwmonChip& chip, int channel, SpeedRange range) {
    auto fan = std::make_unique<MacSmcFan>(chip, channel, range);
    return fan->target_.isOpen() && fan->speed_.isOpen() ? std::move(fan) : nullptr;
}

MacSmcFan::MacSmcFan(HwmonChip& chip, int channel, SpeedRange range)
    : range_(range),
      target_(chip, fmt::format("fan{}_target", channel), SysfsAccess::readWrite),
      speed_(chip, fmt::format("fan{}_input", channel), SysfsAccess::read) {}

std::optional<FanOriginals> MacSmcFan::observe() {
    const std::optional<std::int64_t> target = target_.read();
    const std::optional<std::int64_t> speed = speed_.read();
    if (!target || !speed) {
        return std::nullopt;
    }
    return FanOriginals{{"target", *target}, {"speed", *speed}};
}

bool MacSmcFan::adopt(const FanOriginals& originals) {
    const auto target = findValue(originals, "target", 0, FanSpeed::highest);
    const auto speed = findValue(originals, "speed", 0, FanSpeed::highest);
    if (!target || !speed) {
        return false;
    }
    heldSpeed_ = FanSpeed::within(range_, static_cast<float>(std::max(*target, *speed)));
    isHandedBack_ = false;
    return true;
}

bool MacSmcFan::takeOver() {
    isHandedBack_ = false;
    return drive(heldSpeed_).has_value();
}

std::optional<float> MacSmcFan::drive(float rpm) {
    const float target = std::ceil(FanSpeed::within(range_, std::max(rpm, heldSpeed_)));
    return target_.write(static_cast<std::int64_t>(target)) ? std::optional(target) : std::nullopt;
}

void MacSmcFan::driveFull() {
    // Nothing is left to do when this fails, too.
    static_cast<void>(drive(range_.max));
}

bool MacSmcFan::handBack() {
    // A driver that was loaded anew ignores a 0 unless a target came before it.
    isHandedBack_ = drive(heldSpeed_).has_value() && target_.write(0);
    return isHandedBack_;
}

}  // namespace corvane
