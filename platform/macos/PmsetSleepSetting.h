#pragma once

#include <chrono>
#include <string>
#include <utility>

#include "platform/SystemSleepSetting.h"

namespace corvane {

/// The setting "disablesleep" of the system's tool for power management, which takes root. It outlives the
/// process: whoever sets it clears it.
class PmsetSleepSetting final : public SystemSleepSetting {
public:
    static constexpr const char* systemTool = "/usr/bin/pmset";

    /// Less than the application's silence that the helper takes for its end: the queue waits, and with it
    /// the fans.
    static constexpr std::chrono::milliseconds usualPatience{5000};

    /// `tool` is run with the arguments "-a", "disablesleep" and "1" or "0", and may take `patience`, of 0 to
    /// a day.
    explicit PmsetSleepSetting(std::string tool = systemTool,
                               std::chrono::milliseconds patience = usualPatience)
        : tool_(std::move(tool)), patience_(patience) {}

    /// Waits for the tool's end, whatever its status, and ends it by force when patience is over.
    std::optional<std::string> setSleepDisabled(bool disabled) override;

private:
    std::string tool_;
    std::chrono::milliseconds patience_;
};

}  // namespace corvane
