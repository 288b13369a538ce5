#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/SystemSleepSetting.h"

namespace corvane {

/// A lid setting that only remembers: it keeps every call. Any thread.
class SimulatedSleepSetting final : public SystemSleepSetting {
public:
    std::optional<std::string> setSleepDisabled(bool disabled) override {
        const std::lock_guard lock(mutex_);
        calls_.push_back(disabled);
        if (!failure_) {
            disabled_ = disabled;
        }
        return failure_;
    }

    /// From now on every call fails with this text and changes nothing; none for success again.
    void failWith(std::optional<std::string> text) {
        const std::lock_guard lock(mutex_);
        failure_ = std::move(text);
    }

    [[nodiscard]] bool isSleepDisabled() const {
        const std::lock_guard lock(mutex_);
        return disabled_;
    }

    /// What was asked for, oldest first, failed calls included.
    [[nodiscard]] std::vector<bool> calls() const {
        const std::lock_guard lock(mutex_);
        return calls_;
    }

private:
    mutable std::mutex mutex_;
    std::optional<std::string> failure_;
    bool disabled_ = false;
    std::vector<bool> calls_;
};

}  // namespace corvane
