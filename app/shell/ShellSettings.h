#pragma once

namespace corvane::ShellSettings {

/// Boolean: the temperature beside the status icon; absent means false.
inline constexpr const char* showTemperature = "showTempInMenuBar";
/// Boolean: the two keys that work everywhere; absent means true.
inline constexpr const char* hotkeys = "hotkeysEnabled";

}  // namespace corvane::ShellSettings
