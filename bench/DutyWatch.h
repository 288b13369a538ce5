#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "platform/posix/FileDescriptor.h"

namespace corvane {

/// Sees when a fan's duty is written.
class DutyWatch {
public:
    using Clock = std::chrono::steady_clock;

    /// Throws std::system_error when the file cannot be watched.
    explicit DutyWatch(const std::string& file);

    /// When the next write was seen, also if it writes what was there; writes that were waiting count as
    /// one. Nothing when there is none until `deadline`.
    [[nodiscard]] std::optional<Clock::time_point> nextWrite(Clock::time_point deadline);

    /// Forgets the writes that wait to be seen.
    void forget();

    /// The duty now, 0...255; -1 when it cannot be read.
    [[nodiscard]] int duty() const;

private:
    FileDescriptor file_;
    FileDescriptor notices_;
};

}  // namespace corvane
