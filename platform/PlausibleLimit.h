#pragma once

/// Which limits of a fan's speed, in RPM, count as known. A fan whose controller shows others is not forced:
/// the helper reckons with 32-bit integers and with 0 for what is unknown, and would hold such a fan slower
/// than its firmware lets it turn. What is not a number is no limit.
namespace corvane::PlausibleLimit {

/// The lowest speed beyond the integers.
inline constexpr double beyond = 2147483648.0;

constexpr bool isMinimum(double rpm) {
    return rpm >= 0.0 && rpm < beyond;
}

/// A fan that never reaches one RPM is none.
constexpr bool isMaximum(double rpm) {
    return rpm >= 1.0 && rpm < beyond;
}

}  // namespace corvane::PlausibleLimit
