#pragma once

#include <string>
#include <string_view>

#include <fmt/format.h>

namespace corvane {

/// More fans cannot be addressed: a fan's number is one digit of its keys.
inline constexpr int mostFans = 10;

/// The key of fan `fan`, 0...9, that ends in `ending`: "Ac", "Mn", "Mx", "Tg" or "Md". The diagnostics look
/// at the upper-case mode key only, so that they show which machines have none.
inline std::string fanKey(int fan, std::string_view ending) {
    return fmt::format("F{}{}", fan, ending);
}

}  // namespace corvane
