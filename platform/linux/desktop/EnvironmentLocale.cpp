#include "platform/linux/desktop/EnvironmentLocale.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace corvane {

namespace {

constexpr std::string_view lettersAndDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

/// Whether all of `tag`, which is not empty, is parts of 1 to 8 letters and digits, divided by "-".
bool isLanguageTag(std::string_view tag) {
    constexpr std::size_t longestPart = 8;
    while (true) {
        const std::size_t end = std::min(tag.find('-'), tag.size());
        const bool isPart = end > 0 && end <= longestPart &&
                            tag.substr(0, end).find_first_not_of(lettersAndDigits) == std::string_view::npos;
        if (!isPart || end == tag.size()) {
            return isPart;
        }
        tag.remove_prefix(end + 1);
    }
}

/// The language tag of a locale's name, which may have an encoding and a modifier behind it.
std::optional<std::string> toLanguageTag(std::string_view locale) {
    std::string tag(locale.substr(0, locale.find_first_of(".@")));
    if (tag == "C" || tag == "POSIX") {
        return "en";
    }
    std::ranges::replace(tag, '_', '-');
    return isLanguageTag(tag) ? std::optional(tag) : std::nullopt;
}

/// The tags of a list of locales with colons between them.
std::vector<std::string> toLanguageTags(std::string_view locales) {
    std::vector<std::string> tags;
    while (!locales.empty()) {
        const std::size_t end = std::min(locales.find(':'), locales.size());
        if (auto tag = toLanguageTag(locales.substr(0, end))) {
            tags.push_back(std::move(*tag));
        }
        locales.remove_prefix(std::min(end + 1, locales.size()));
    }
    return tags;
}

}  // namespace

std::vector<std::string> EnvironmentLocale::preferredLanguages() const {
    if (auto languages = toLanguageTags(valueOf("LANGUAGE")); !languages.empty()) {
        return languages;
    }
    return {toLanguageTag(locale()).value_or("en")};
}

std::string EnvironmentLocale::locale() const {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (std::string value = valueOf(name); !value.empty()) {
            return value;
        }
    }
    return "";
}

std::string EnvironmentLocale::valueOf(const char* name) const {
    const char* value = lookup_(name);
    return value == nullptr ? "" : value;
}

}  // namespace corvane
