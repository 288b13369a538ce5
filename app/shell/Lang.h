#pragma once

#include "platform/Locale.h"
#include "platform/UserDefaults.h"

namespace corvane {

/// Which member of a text pair is shown. Every text of the application exists in German and English, written
/// as a pair where it is shown; English is for every language other than German. Main loop.
class Lang {
public:
    /// The setting that overrides the system: "de", "en" or "system". Any other value counts as "system".
    static constexpr const char* setting = "appLanguage";

    /// Both outlive the object.
    Lang(const UserDefaults& defaults, const Locale& locale) : defaults_(defaults), locale_(locale) {}

    /// Evaluated afresh each time, so that texts follow a change of the setting at once.
    [[nodiscard]] bool isGerman() const;

    /// The member to show; both are UTF-8 literals. Format strings are chosen the same way and then filled.
    [[nodiscard]] const char* text(const char* german, const char* english) const {
        return isGerman() ? german : english;
    }

private:
    const UserDefaults& defaults_;
    const Locale& locale_;
};

}  // namespace corvane
