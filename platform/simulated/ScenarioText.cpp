#include "platform/simulated/ScenarioText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <locale>
#include <sstream>
#include <utility>

namespace corvane {

namespace {

constexpr std::string_view blanks = " \t\r";

}  // namespace

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view withoutComment(std::string_view line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '#' && (i == 0 || blanks.find(line[i - 1]) != std::string_view::npos)) {
            return line.substr(0, i);
        }
    }
    return line;
}

std::string_view nextWord(std::string_view& text) {
    text = trimmed(text);
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    text = trimmed(text.substr(word.size()));
    return word;
}

std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 40;
    std::string safe(text.substr(0, longest));
    std::ranges::replace_if(
        safe, [](char letter) { return letter < ' ' || letter > '~'; }, '?');
    return "\"" + safe + (text.size() > longest ? "...\"" : "\"");
}

template <std::floating_point Number>
std::optional<Number> parsedNumber(std::string_view text) {
    using Limits = std::numeric_limits<Number>;
    constexpr std::array<std::pair<std::string_view, Number>, 3> words{
        {{"nan", Limits::quiet_NaN()}, {"inf", Limits::infinity()}, {"-inf", -Limits::infinity()}}};
    for (const auto& [word, number] : words) {
        if (text == word) {
            return number;
        }
    }
    // Streams differ in what else they take for a number.
    if (text.starts_with('+') || text.find_first_not_of("0123456789.eE+-") != std::string_view::npos) {
        return std::nullopt;
    }
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    Number number{};
    stream >> number;
    return !stream.fail() && stream.peek() == std::istringstream::traits_type::eof() ? std::optional(number)
                                                                                     : std::nullopt;
}

template std::optional<float> parsedNumber<float>(std::string_view text);
template std::optional<double> parsedNumber<double>(std::string_view text);

}  // namespace corvane
