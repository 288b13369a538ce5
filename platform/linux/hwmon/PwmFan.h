#pragma once

#include <memory>
#include <optional>

#include "platform/linux/hwmon/ChipAttribute.h"
#include "platform/linux/hwmon/FanDriver.h"

namespace corvane {

/// A fan driven by a duty cycle: `pwmN` (0...255) under `pwmN_enable`, where 1 is manual and the meaning of
/// all other values is the chip's own, 0 mostly being full speed. Speeds map to duties linearly over the
/// range.
class PwmFan final : public FanDriver {
public:
    /// The driver's own guard against a silent owner (thinkpad), in seconds: its maximum is 120, and it is
    /// started anew by every duty written.
    static constexpr std::int64_t watchdogSeconds = 30;

    /// Null when the fan has no duty and mode that can be both read and written, or no mode that is
    /// automatic. `range` is known; `chip` outlives the fan.
    static std::unique_ptr<FanDriver> make(HwmonChip& chip, int channel, SpeedRange range);

    PwmFan(HwmonChip& chip, int channel, SpeedRange range);

    [[nodiscard]] SpeedRange range() const override { return range_; }
    [[nodiscard]] std::optional<FanOriginals> observe() override;
    [[nodiscard]] bool adopt(const FanOriginals& originals) override;
    [[nodiscard]] bool takeOver() override;
    [[nodiscard]] std::optional<bool> isHeld() override;
    [[nodiscard]] std::optional<float> drive(float rpm) override;
    void driveFull() override;
    [[nodiscard]] bool handBack() override;
    [[nodiscard]] bool isHandedBack() override;

private:
    /// Whether `enable` is a mode that a hand-back can restore.
    [[nodiscard]] bool isAutomatic(std::int64_t enable) const;
    [[nodiscard]] std::int64_t dutyFor(float rpm) const;
    [[nodiscard]] float speedOf(std::int64_t duty) const;

    SpeedRange range_;
    /// Mode 0 is faster than any duty reaches: a fan in it is left alone.
    bool isZeroBeyondFullDuty_;
    /// The duty tells what the firmware makes of the fan, too.
    bool tellsFirmwareDuty_;
    ChipAttribute duty_;
    ChipAttribute enable_;
    std::optional<ChipAttribute> watchdog_;
    std::int64_t heldDuty_ = 0;
    std::int64_t originalEnable_ = 0;
    std::int64_t originalWatchdog_ = 0;
};

}  // namespace corvane
