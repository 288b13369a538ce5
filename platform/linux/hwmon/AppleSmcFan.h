#pragma once

#include <memory>

#include "platform/linux/hwmon/ChipAttribute.h"
#include "platform/linux/hwmon/FanDriver.h"

namespace corvane {

/// A fan of an Intel Mac (driver applesmc): `fanN_manual` 1 takes it over, `fanN_output` is its target.
class AppleSmcFan final : public FanDriver {
public:
    /// Null when the fan cannot be written. `chip` outlives the fan.
    static std::unique_ptr<FanDriver> make(HwmonChip& chip, int channel, SpeedRange range);

    AppleSmcFan(HwmonChip& chip, int channel, SpeedRange range);

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
    SpeedRange range_;
    ChipAttribute manual_;
    ChipAttribute output_;
    ChipAttribute speed_;
    float heldSpeed_ = 0.0F;
};

}  // namespace corvane
