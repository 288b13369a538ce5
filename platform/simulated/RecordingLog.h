#pragma once

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Log.h"

namespace corvane {

/// Keeps what is written to it, for tests. Any thread.
class RecordingLog final : public Log {
public:
    void write(std::string_view line) noexcept override {
        const std::lock_guard lock(mutex_);
        lines_.emplace_back(line);
    }

    [[nodiscard]] std::vector<std::string> lines() const {
        const std::lock_guard lock(mutex_);
        return lines_;
    }

    /// How many lines contain `text`.
    [[nodiscard]] std::size_t count(std::string_view text) const {
        const std::lock_guard lock(mutex_);
        return static_cast<std::size_t>(std::ranges::count_if(
            lines_, [&](const std::string& line) { return line.find(text) != std::string::npos; }));
    }

    void clear() {
        const std::lock_guard lock(mutex_);
        lines_.clear();
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

}  // namespace corvane
