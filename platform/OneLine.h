#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// `text`, which may come from anywhere, as one line to show to people: control characters and line breaks
/// become blanks, and what goes beyond 200 bytes becomes "…". `text` is UTF-8, and so is the result.
std::string oneLine(std::string_view text);

}  // namespace corvane
