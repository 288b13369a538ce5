#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "bench/CountingCaller.h"

namespace corvane {

/// Well-behaved callers, each of which waits for an answer before it calls again. One thread.
class Crowd {
public:
    using Clock = std::chrono::steady_clock;

    /// Connects so many to the bus at `address`; throws sdbus::Error.
    Crowd(const std::string& address, std::size_t count);

    /// All call on and on until `deadline`.
    void callUntil(Clock::time_point deadline);

    [[nodiscard]] std::uint64_t answers() const;
    /// Of these, how many were errors.
    [[nodiscard]] std::uint64_t errors() const;

private:
    std::vector<std::unique_ptr<CountingCaller>> callers_;
};

}  // namespace corvane
