#pragma once

#include <memory>

#include "platform/linux/hwmon/ChipAttribute.h"
#include "platform/linux/hwmon/FanDriver.h"

namespace corvane {

/// A fan of an Apple-silicon Mac (driver macsmc_hwmon): a target within the limits takes it over, a target of
/// 0 gives it back. Which of the two is in force cannot be read.
class MacSmcFan final : public FanDriver {
public:
    /// Null when the target may not be written, as is so unless the driver was loaded with its fan control
    /// enabled. `chip` outlives the fan.
    static std::unique_ptr<FanDriver> make(HwmonChip& chip, int channel, SpeedRange range);

    MacSmcFan(HwmonChip& chip, int channel, SpeedRange range);

    [[nodiscard]] SpeedRange range() const override { return range_; }
    [[nodiscard]] std::optional<FanOriginals> observe() override;
    [[nodiscard]] bool adopt(const FanOriginals& originals) override;
    [[nodiscard]] bool takeOver() override;
    [[nodiscard]] std::optional<bool> isHeld() override { return !isHandedBack_; }
    [[nodiscard]] std::optional<float> drive(float rpm) override;
    void driveFull() override;
    [[nodiscard]] bool handBack() override;
    [[nodiscard]] bool isHandedBack() override { return isHandedBack_; }

private:
    SpeedRange range_;
    ChipAttribute target_;
    ChipAttribute speed_;
    float heldSpeed_ = 0.0F;
    bool isHandedBack_ = true;
};

}  // namespace corvane
