#pragma once

#include <functional>
#include <memory>

#include "platform/Appearance.h"

namespace corvane {

/// Dark, whatever the user prefers. Main loop.
class DarkAppearance final : public Appearance {
public:
    [[nodiscard]] bool isDark() const override { return true; }

    /// There is never a change to tell of.
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> /*changed*/) override {
        return std::make_unique<Observation>();
    }
};

}  // namespace corvane
