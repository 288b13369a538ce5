#include "app/shell/Lang.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

namespace corvane {

namespace {

constexpr std::string_view german = "de";
constexpr std::string_view english = "en";

bool beginsWithGerman(std::string language) {
    std::ranges::transform(language, language.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return language.starts_with(german);
}

}  // namespace

bool Lang::isGerman() const {
    const auto choice = defaults_.get<std::string>(setting);
    if (choice == german) {
        return true;
    }
    if (choice == english) {
        return false;
    }
    const std::vector<std::string> preferred = locale_.preferredLanguages();
    return !preferred.empty() && beginsWithGerman(preferred.front());
}

}  // namespace corvane
