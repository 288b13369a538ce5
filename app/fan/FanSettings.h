#pragma once

namespace corvane::FanSettings {

/// Text: "manual" or "auto"; absent means "auto".
inline constexpr const char* coolingMode = "fan.coolingMode";
/// Text: "silent", "balanced" or "max"; absent means "balanced".
inline constexpr const char* coolingProfile = "fan.coolingProfile";
/// Boolean: notifications on heat and throttling; absent means true.
inline constexpr const char* heatAlerts = "heatAlerts";

}  // namespace corvane::FanSettings
