#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// The source of an AppleScript that runs a shell script as root, once an administrator has agreed to
/// `prompt`. Texts are UTF-8.
[[nodiscard]] std::string appleScriptSource(std::string_view shellScript, std::string_view prompt);

}  // namespace corvane
