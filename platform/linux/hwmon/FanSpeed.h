#pragma once

#include <algorithm>
#include <cstdint>

#include "platform/linux/hwmon/FanDriver.h"

namespace corvane::FanSpeed {

/// No fan turns faster, in RPM; a larger reading is a mistake.
inline constexpr std::int64_t highest = 100'000;

/// `rpm` brought into a range that is known; unchanged otherwise.
inline float within(SpeedRange range, float rpm) {
    return range.isKnown() ? std::clamp(rpm, range.min, range.max) : rpm;
}

}  // namespace corvane::FanSpeed
