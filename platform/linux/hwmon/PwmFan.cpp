#include "platform/linux/hwmon/PwmFan.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <fmt/format.h>

#include "platform/linux/hwmon/FanSpeed.h"

namespace corvane {

namespace {

constexpr std::int64_t fullDuty = 255;
constexpr std::int64_t manual = 1;
/// Largest mode in use is 99; drivers take a byte.
constexpr std::int64_t maxEnable = 255;
/// Limit of the thinkpad driver, in seconds.
constexpr std::int64_t maxWatchdog = 120;
constexpr std::string_view thinkPad = "thinkpad";
/// Chips whose duty registers hold the duty of manual mode only; later ones of the family tell both.
constexpr std::array<std::string_view, 5> manualDutyChips = {"it8705", "it8712", "it8716", "it8718",
                                                             "it8720"};
/// Its modes only tell how the supply is switched: the kernel's thermal governor sets the duty in all of
/// them.
constexpr std::string_view governedFan = "pwmfan";

bool tellsFirmwareDuty(std::string_view chip) {
    return chip != thinkPad &&
           std::find(manualDutyChips.begin(), manualDutyChips.end(), chip) == manualDutyChips.end();
}

}  // namespace

std::unique_ptr<FanDriver> PwmFan::make(HwmonChip& chip, int channel, SpeedRange range) {
    if (chip.identity().name == governedFan) {
        return nullptr;
    }
    auto fan = std::make_unique<PwmFan>(chip, channel, range);
    return fan->duty_.isOpen() && fan->enable_.isOpen() ? std::move(fan) : nullptr;
}

PwmFan::PwmFan(HwmonChip& chip, int channel, SpeedRange range)
    : range_(range),
      isZeroBeyondFullDuty_(chip.identity().name == thinkPad),
      tellsFirmwareDuty_(tellsFirmwareDuty(chip.identity().name)),
      duty_(chip, fmt::format("pwm{}", channel), SysfsAccess::readWrite),
      enable_(chip, fmt::format("pwm{}_enable", channel), SysfsAccess::readWrite) {
    if (chip.identity().name == thinkPad) {
        watchdog_.emplace(chip, "device/driver/fan_watchdog", SysfsAccess::readWrite);
        if (!watchdog_->isOpen()) {
            watchdog_.reset();
        }
    }
}

std::optional<FanOriginals> PwmFan::observe() {
    const std::optional<std::int64_t> enable = enable_.read();
    const std::optional<std::int64_t> duty = duty_.read();
    if (!enable || !duty || !isAutomatic(*enable)) {
        return std::nullopt;
    }
    FanOriginals originals = {{"pwm", *duty}, {"enable", *enable}};
    if (watchdog_) {
        const std::optional<std::int64_t> watchdog = watchdog_->read();
        if (!watchdog) {
            return std::nullopt;
        }
        originals.push_back({"watchdog", *watchdog});
    }
    return originals;
}

bool PwmFan::adopt(const FanOriginals& originals) {
    const auto duty = findValue(originals, "pwm", 0, fullDuty);
    const auto enable = findValue(originals, "enable", 0, maxEnable);
    const auto watchdog = findValue(originals, "watchdog", 0, maxWatchdog);
    if (!enable || !isAutomatic(*enable)) {
        return false;
    }
    // Full duty wherever it is not known what the firmware held the fan at.
    heldDuty_ = *enable == 0 || !tellsFirmwareDuty_ ? fullDuty : duty.value_or(fullDuty);
    originalEnable_ = *enable;
    originalWatchdog_ = watchdog.value_or(0);
    return true;
}

bool PwmFan::takeOver() {
    if (watchdog_ && !watchdog_->write(watchdogSeconds)) {
        return false;
    }
    return enable_.write(manual) && isHeld() == true && duty_.write(heldDuty_);
}

std::optional<bool> PwmFan::isHeld() {
    const std::optional<std::int64_t> enable = enable_.read();
    return enable ? std::optional(*enable == manual) : std::nullopt;
}

std::optional<float> PwmFan::drive(float rpm) {
    const std::int64_t duty = std::max(dutyFor(rpm), heldDuty_);
    const float speed = std::max(FanSpeed::within(range_, rpm), speedOf(heldDuty_));
    return duty_.write(duty) ? std::optional(speed) : std::nullopt;
}

void PwmFan::driveFull() {
    // Nothing is left to do when this fails, too.
    static_cast<void>(duty_.write(fullDuty));
}

bool PwmFan::handBack() {
    // Only what reads back counts: a driver that refused to let go of the fan refuses these as well.
    static_cast<void>(enable_.write(originalEnable_));
    if (watchdog_) {
        static_cast<void>(watchdog_->write(originalWatchdog_));
    }
    return isHandedBack();
}

bool PwmFan::isHandedBack() {
    return enable_.read() == originalEnable_ && (!watchdog_ || watchdog_->read() == originalWatchdog_);
}

bool PwmFan::isAutomatic(std::int64_t enable) const {
    return enable != manual && (enable != 0 || !isZeroBeyondFullDuty_);
}

std::int64_t PwmFan::dutyFor(float rpm) const {
    const float above = FanSpeed::within(range_, rpm) - range_.min;
    // Rounded up: never less than asked for.
    return static_cast<std::int64_t>(
        std::ceil(above * static_cast<float>(fullDuty) / (range_.max - range_.min)));
}

float PwmFan::speedOf(std::int64_t duty) const {
    return range_.min + (range_.max - range_.min) * static_cast<float>(duty) / static_cast<float>(fullDuty);
}

}  // namespace corvane
