#include "platform/linux/desktop/DesktopEntries.h"

#include <algorithm>
#include <sstream>

#include <fmt/format.h>

namespace corvane {

namespace {

constexpr std::string_view blanks = " \t\r\n";

/// With all their translations files have some hundred. What counts comes early.
constexpr std::size_t mostEntries = 4096;

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return trimmed(line);
}

}  // namespace

DesktopEntries::DesktopEntries(std::string_view text) {
    bool isInGroup = false;
    while (!text.empty() && entries_.size() < mostEntries) {
        const std::string_view line = takeLine(text);
        const std::size_t equals = line.find('=');
        if (line.starts_with('[')) {
            isInGroup = line == "[Desktop Entry]";
        } else if (isInGroup && equals != std::string_view::npos && !line.starts_with('#')) {
            entries_.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
        }
    }
}

std::string DesktopEntries::plain(std::string_view key) const {
    constexpr std::string_view escapes = "sntr\\";
    constexpr std::string_view characters = " \n\t\r\\";
    const auto found = entries_.find(key);
    const std::string_view value = found == entries_.end() ? std::string_view() : found->second;
    std::string plain;
    for (std::size_t at = 0; at < value.size(); ++at) {
        const std::size_t escape =
            value[at] == '\\' && at + 1 < value.size() ? escapes.find(value[at + 1]) : std::string::npos;
        if (escape == std::string::npos) {
            plain += value[at];
        } else {
            plain += characters[escape];
            ++at;
        }
    }
    return plain;
}

std::string DesktopEntries::localised(std::string_view key, const std::vector<std::string>& languages) const {
    for (std::string language : languages) {
        // "de-CH" is "de_CH" in these files, and a file that has none of it may have "de".
        std::ranges::replace(language, '-', '_');
        for (const std::string& locale : {language, language.substr(0, language.find('_'))}) {
            const std::string localisedKey = fmt::format("{}[{}]", key, locale);
            if (has(localisedKey)) {
                return plain(localisedKey);
            }
        }
        // What has no language is English.
        if (language.starts_with("en")) {
            break;
        }
    }
    return plain(key);
}

bool DesktopEntries::isTrue(std::string_view key) const {
    const auto found = entries_.find(key);
    return found != entries_.end() && found->second == "true";
}

std::vector<std::string> DesktopEntries::list(std::string_view key) const {
    std::vector<std::string> parts;
    std::istringstream stream(plain(key));
    for (std::string part; std::getline(stream, part, ';');) {
        if (!part.empty()) {
            parts.push_back(part);
        }
    }
    return parts;
}

}  // namespace corvane
