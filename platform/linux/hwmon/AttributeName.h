#pragma once

#include <charconv>
#include <optional>
#include <string_view>

namespace corvane {

/// The number N of an attribute called `prefix`N`suffix`, 1...99: channelOf("fan2_input", "fan", "_input")
/// is 2.
inline std::optional<int> channelOf(std::string_view name, std::string_view prefix, std::string_view suffix) {
    if (name.size() <= prefix.size() + suffix.size() || !name.starts_with(prefix) ||
        !name.ends_with(suffix)) {
        return std::nullopt;
    }
    const std::string_view digits = name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
    int channel = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), channel);
    const bool isChannel = error == std::errc() && end == digits.end() && channel >= 1 && channel <= 99;
    return isChannel ? std::optional(channel) : std::nullopt;
}

}  // namespace corvane
