#include "platform/linux/hwmon/AppleSmcFan.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "platform/linux/hwmon/FanSpeed.h"

namespace corvane {

namespace {

constexpr std::int64_t automatic = 0;
constexpr std::int64_t manual = 1;

}  // namespace

std::unique_ptr<FanDriver> AppleSmcFan::make(HwmonChip& chip, int channel, SpeedRange range) {
    auto fan = std::make_unique<AppleSmcFan>(chip, channel, range);
    const bool isWhole = fan->manual_.isOpen() && fan->output_.isOpen() && fan->speed_.isOpen();
    return isWhole ? std::move(fan) : nullptr;
}

AppleSmcFan::AppleSmcFan(HwmonChip& chip, int channel, SpeedRange range)
    : range_(range),
      manual_(chip, fmt::format("fan{}_manual", channel), SysfsAccess::readWrite),
      output_(chip, fmt::format("fan{}_output", channel), SysfsAccess::readWrite),
      speed_(chip, fmt::format("fan{}_input", channel), SysfsAccess::read) {}

std::optional<FanOriginals> AppleSmcFan::observe() {
    const std::optional<std::int64_t> mode = manual_.read();
    const std::optional<std::int64_t> output = output_.read();
    const std::optional<std::int64_t> speed = speed_.read();
    if (mode != automatic || !output || !speed) {
        return std::nullopt;
    }
    return FanOriginals{{"manual", *mode}, {"output", *output}, {"speed", *speed}};
}

bool AppleSmcFan::adopt(const FanOriginals& originals) {
    const auto mode = findValue(originals, "manual", automatic, automatic);
    const auto output = findValue(originals, "output", 0, FanSpeed::highest);
    const auto speed = findValue(originals, "speed", 0, FanSpeed::highest);
    if (!mode) {
        return false;
    }
    const std::int64_t held = std::max(output.value_or(FanSpeed::highest), speed.value_or(FanSpeed::highest));
    heldSpeed_ = FanSpeed::within(range_, static_cast<float>(held));
    return true;
}

bool AppleSmcFan::takeOver() {
    return manual_.write(manual) && isHeld() == true && drive(heldSpeed_).has_value();
}

std::optional<bool> AppleSmcFan::isHeld() {
    const std::optional<std::int64_t> mode = manual_.read();
    return mode ? std::optional(*mode == manual) : std::nullopt;
}

std::optional<float> AppleSmcFan::drive(float rpm) {
    const float output = std::ceil(FanSpeed::within(range_, std::max(rpm, heldSpeed_)));
    return output_.write(static_cast<std::int64_t>(output)) ? std::optional(output) : std::nullopt;
}

void AppleSmcFan::driveFull() {
    // Nothing is left to do when this fails, too.
    static_cast<void>(drive(range_.max));
}

bool AppleSmcFan::handBack() {
    // Only what reads back counts.
    static_cast<void>(manual_.write(automatic));
    return isHandedBack();
}

bool AppleSmcFan::isHandedBack() {
    return manual_.read() == automatic;
}

}  // namespace corvane
