#pragma once

#include "app/shell/Lang.h"

namespace corvane {

/// What a temperature in °C is called and shown in. A limit belongs to what is hotter. Words and colours
/// change at different temperatures. Main loop.
struct TemperatureScale {
    /// In the user's language, UTF-8.
    [[nodiscard]] static const char* word(double celsius, const Lang& lang);
    /// "green", "lime", "orange", "ember" or "red".
    [[nodiscard]] static const char* colorRole(double celsius);
};

}  // namespace corvane
