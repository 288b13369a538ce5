#pragma once

#include <QColor>
#include <algorithm>
#include <cmath>

namespace corvane {

/// A channel of 0...1 as light, not as a screen is told.
inline double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

inline double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// How well people tell two colours apart, 1...21; texts need 4.5.
inline double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

}  // namespace corvane
