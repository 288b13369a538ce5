#pragma once

#include "app/shell/Lang.h"
#include "core/CoolingProfile.h"

namespace corvane {

/// What a cooling profile is called, and what it does, in the user's language; UTF-8. Main loop.
struct ProfileTexts {
    [[nodiscard]] static const char* name(CoolingProfile::Kind kind, const Lang& lang);
    [[nodiscard]] static const char* blurb(CoolingProfile::Kind kind, const Lang& lang);
};

}  // namespace corvane
