#pragma once

#include "platform/Locale.h"

namespace corvane {

/// The languages of the system's settings. Main loop.
class MacLocale final : public Locale {
public:
    [[nodiscard]] std::vector<std::string> preferredLanguages() const override;
};

}  // namespace corvane
