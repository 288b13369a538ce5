#pragma once

namespace corvane {

// What the helper logs in many of its stories.

inline constexpr auto loopStarted = "Corvane daemon: loop started";
inline constexpr auto released = "Corvane daemon: released to Apple-auto (verified, attempt 1)";

}  // namespace corvane
