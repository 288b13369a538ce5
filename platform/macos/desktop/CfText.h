#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/macos/CfRef.h"

namespace corvane {

/// Null when `text` is not UTF-8.
[[nodiscard]] CfRef<CFStringRef> cfString(std::string_view text);

/// UTF-8, up to the first NUL. None for null, for what is not a string and for what UTF-8 cannot say.
[[nodiscard]] std::optional<std::string> textOf(CFTypeRef object);

}  // namespace corvane
