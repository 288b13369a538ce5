#pragma once

#include <functional>
#include <memory>

#include "platform/Observation.h"

namespace corvane {

/// Whether applications are to look dark or light. Belongs to the main loop and does not block it.
class Appearance {
public:
    Appearance() = default;
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;
    virtual ~Appearance() = default;

    /// What the user prefers, as far as is known by now.
    [[nodiscard]] virtual bool isDark() const = 0;

    /// Runs `changed` on the main loop after `isDark` has changed. The appearance outlives the observation.
    [[nodiscard]] virtual std::unique_ptr<Observation> observe(std::function<void()> changed) = 0;
};

}  // namespace corvane
