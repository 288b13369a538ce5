#pragma once

#include <optional>
#include <string>

namespace corvane {

/// The system-wide setting that decides whether the computer sleeps when its lid is closed.
///
/// Called from one thread at a time; may block for at most a few seconds. What is set ends with the process
/// at the latest where the platform can do that, and is switched off by its owner everywhere else.
class SystemSleepSetting {
public:
    SystemSleepSetting() = default;
    SystemSleepSetting(const SystemSleepSetting&) = delete;
    SystemSleepSetting& operator=(const SystemSleepSetting&) = delete;
    virtual ~SystemSleepSetting() = default;

    /// Disables system sleep, or enables it again. May be repeated. Returns a description of what prevented
    /// it, or nothing.
    virtual std::optional<std::string> setSleepDisabled(bool disabled) = 0;
};

}  // namespace corvane
