#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The languages of the system's settings. Without one there are none. One at a time.
class FakeLocale {
public:
    explicit FakeLocale(std::vector<std::string> languages) : languages_(std::move(languages)) {}

    void set(std::vector<std::string> languages) { languages_ = std::move(languages); }
    [[nodiscard]] const std::vector<std::string>& languages() const { return languages_; }

private:
    std::vector<std::string> languages_;
    Current<FakeLocale> current_{*this};
};

}  // namespace corvane
