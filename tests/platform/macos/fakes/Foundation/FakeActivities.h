#pragma once

#include <cstdint>
#include <vector>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// What the process does that the user must not wait for. One at a time.
class FakeActivities {
public:
    /// The options of each that was begun, as their bits have it.
    [[nodiscard]] const std::vector<std::uint64_t>& begun() const { return begun_; }
    /// How many are under way.
    [[nodiscard]] int underWay() const { return underWay_; }

    // For the framework's class.
    void begin(std::uint64_t options) {
        begun_.push_back(options);
        ++underWay_;
    }
    void end() { --underWay_; }

private:
    std::vector<std::uint64_t> begun_;
    int underWay_ = 0;
    Current<FakeActivities> current_{*this};
};

}  // namespace corvane
