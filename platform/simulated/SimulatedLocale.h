#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Locale.h"

namespace corvane {

/// Prefers what it is told to.
class SimulatedLocale final : public Locale {
public:
    explicit SimulatedLocale(std::vector<std::string> languages = {"en"})
        : languages_(std::move(languages)) {}

    [[nodiscard]] std::vector<std::string> preferredLanguages() const override { return languages_; }

    void prefer(std::vector<std::string> languages) { languages_ = std::move(languages); }

private:
    std::vector<std::string> languages_;
};

}  // namespace corvane
