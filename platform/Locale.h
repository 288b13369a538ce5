#pragma once

#include <string>
#include <vector>

namespace corvane {

/// The user's choices of language and form. Main loop.
class Locale {
public:
    Locale() = default;
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;
    virtual ~Locale() = default;

    /// Languages the user prefers, best first, as language tags such as "de-CH"; read afresh. May be empty.
    [[nodiscard]] virtual std::vector<std::string> preferredLanguages() const = 0;
};

}  // namespace corvane
