#include "bench/Figures.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace corvane {

double quantileOf(std::vector<double> values, double quantile) {
    std::sort(values.begin(), values.end());
    const double rank = std::ceil(quantile * static_cast<double>(values.size()));
    return values[static_cast<std::size_t>(std::max(rank, 1.0)) - 1];
}

void Figures::add(const std::string& name, const std::string& unit, double value) {
    auto figure = std::find_if(figures_.begin(), figures_.end(),
                               [&name](const Figure& each) { return each.name == name; });
    if (figure == figures_.end()) {
        figure = figures_.insert(figure, {name, unit, {}});
    }
    figure->runs.push_back(value);
}

void Figures::print() const {
    fmt::print("{:<48} {:>10} {:>10} {:>10}\n", "figure", "median", "least", "greatest");
    for (const Figure& figure : figures_) {
        fmt::print("{:<48} {:>10.3f} {:>10.3f} {:>10.3f} {}\n", figure.name, quantileOf(figure.runs, 0.5),
                   quantileOf(figure.runs, 0.0), quantileOf(figure.runs, 1.0), figure.unit);
    }
}

}  // namespace corvane
