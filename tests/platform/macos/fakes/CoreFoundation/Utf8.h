#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace corvane {

/// How many UTF-16 units a text has; none when it is not UTF-8: cut off, overlong, a lone surrogate or beyond
/// what there is.
[[nodiscard]] std::optional<std::size_t> utf16LengthOf(std::string_view text);

}  // namespace corvane
