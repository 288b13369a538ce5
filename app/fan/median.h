#pragma once

#include <optional>
#include <vector>

namespace corvane {

/// The middle of the values in order; the mean of the two middle ones when their count is even; none without
/// values. None of them is NaN.
std::optional<double> median(std::vector<double> values);

}  // namespace corvane
