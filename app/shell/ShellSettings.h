#pragma once

namespace corvane::ShellSettings {

/// Boolean: the temperature beside the status icon; absent means false.
inline constexpr const char* showTemperature = "showTempInMenuBar";
/// Boolean: the two keys that work everywhere; absent means true.
inline constexpr const char* hotkeys = "hotkeysEnabled";
/// Boolean: the panel no longer asks whether to start at login; absent means false.
inline constexpr const char* loginChoiceMade = "loginChoiceMade";
/// Text: the version whose introduction was last seen to its end.
inline constexpr const char* seenIntroduction = "onboardingSeenVersion";

}  // namespace corvane::ShellSettings
