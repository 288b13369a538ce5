#pragma once

#include <cstdint>
#include <random>

#include "platform/SerialQueue.h"

namespace corvane {

/// What chance decides in a life. The same seed decides the same.
class SoakDice {
public:
    explicit SoakDice(std::uint64_t seed) : random_(seed) {}

    /// Below `count`.
    std::uint64_t pick(std::uint64_t count) { return random_() % count; }
    bool oneIn(std::uint64_t count) { return pick(count) == 0; }
    /// 1 s to `most` of them.
    Duration seconds(std::uint64_t most) { return std::chrono::seconds(1) * (1 + pick(most)); }

private:
    std::mt19937_64 random_;
};

}  // namespace corvane
