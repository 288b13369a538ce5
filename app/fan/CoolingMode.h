#pragma once

#include <optional>
#include <string_view>

namespace corvane {

/// Who chooses the floor: the user's slider, or a profile that follows temperature.
enum class CoolingMode { manual, automatic };

/// The form kept in settings: "manual" or "auto".
std::string_view rawValue(CoolingMode mode);

/// None for any text that is not exactly a raw value.
std::optional<CoolingMode> coolingModeFromRawValue(std::string_view text);

}  // namespace corvane
