#pragma once

#include <concepts>
#include <limits>

namespace corvane {

// Numbers that no reading should be and no wish should ask for.

template <std::floating_point T>
inline constexpr T infinite = std::numeric_limits<T>::infinity();

template <std::floating_point T>
inline constexpr T notANumber = std::numeric_limits<T>::quiet_NaN();

}  // namespace corvane
