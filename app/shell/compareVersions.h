#pragma once

#include <compare>
#include <string_view>

namespace corvane {

/// Orders two versions (UTF-8) as people do: runs of digits compare as numbers, of any length, and everything
/// else by character. Nothing is filled in: "1.2" is before "1.2.0", while "1.02" and "1.2" are equivalent.
/// Pure.
std::weak_ordering compareVersions(std::string_view left, std::string_view right);

}  // namespace corvane
