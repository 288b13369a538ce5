#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Locale.h"
#include "platform/linux/desktop/EnvironmentLookup.h"

namespace corvane {

/// The languages that the environment asks for.
///
/// They are the entries of $LANGUAGE, a list with colons, whatever the other variables say, or, when there is
/// none, the first of $LC_ALL, $LC_MESSAGES and $LANG that is set and not empty. "de_DE.UTF-8@euro" is
/// "de-DE"; C, POSIX and an environment that says nothing are "en". Entries that are no language are left
/// out.
class EnvironmentLocale final : public Locale {
public:
    explicit EnvironmentLocale(EnvironmentLookup lookup) : lookup_(std::move(lookup)) {}

    [[nodiscard]] std::vector<std::string> preferredLanguages() const override;

private:
    [[nodiscard]] std::string valueOf(const char* name) const;
    [[nodiscard]] std::string locale() const;

    EnvironmentLookup lookup_;
};

}  // namespace corvane
