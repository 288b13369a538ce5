#pragma once

#include <string>
#include <vector>

namespace corvane {

/// The value that the share `quantile` (0...1) of `values` does not exceed; at least one value must be there.
[[nodiscard]] double quantileOf(std::vector<double> values, double quantile);

/// What was measured, run for run.
class Figures {
public:
    /// The value of one run. A figure keeps the place of its first run.
    void add(const std::string& name, const std::string& unit, double value);

    /// A table of all figures: the median of the runs, their least and their greatest.
    void print() const;

private:
    struct Figure {
        std::string name;
        std::string unit;
        std::vector<double> runs;
    };

    std::vector<Figure> figures_;
};

}  // namespace corvane
