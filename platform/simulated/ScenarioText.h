#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

// How the text of a control file is taken apart.

/// What is wrong with a line, in English, or nothing.
using Objection = std::optional<std::string>;

/// Without blanks at both ends.
std::string_view trimmed(std::string_view text);

/// Without what follows a "#" at the beginning or after a blank.
std::string_view withoutComment(std::string_view line);

/// Takes the first word off `text`; empty when there is none.
std::string_view nextWord(std::string_view& text);

/// Foreign text for a message: short, and without control characters.
std::string quoted(std::string_view text);

/// The number that all of `text` is: with a point whatever the user's language, or nan, inf, -inf.
template <std::floating_point Number>
std::optional<Number> parsedNumber(std::string_view text);

/// The number that all of `text` is.
template <std::integral Number>
std::optional<Number> parsedNumber(std::string_view text) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return number;
}

/// The number that all of `text` is, if it is within the bounds.
template <typename Number>
std::optional<Number> numberWithin(std::string_view text, Number least, Number most) {
    const std::optional<Number> number = parsedNumber<Number>(text);
    return number && *number >= least && *number <= most ? number : std::nullopt;
}

}  // namespace corvane
