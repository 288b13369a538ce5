#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvane {

/// The last five raw maxima of the safety sensors, °C, and their median, which votes single spikes down.
/// Fixed storage: the control loop does not allocate.
class SafetyTempHistory {
public:
    void append(double celsius) {
        if (count_ == values_.size()) {
            std::rotate(values_.begin(), values_.begin() + 1, values_.end());
            --count_;
        }
        values_[count_++] = celsius;
    }

    void clear() { count_ = 0; }

    /// The upper of the two middles for an even count. At least one value must be there.
    [[nodiscard]] double median() const {
        auto sorted = values_;
        const auto end = sorted.begin() + static_cast<std::ptrdiff_t>(count_);
        std::partial_sort(sorted.begin(), end, end);
        return sorted[count_ / 2];
    }

private:
    std::array<double, 5> values_{};
    std::size_t count_ = 0;
};

}  // namespace corvane
