#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Observation.h"

namespace corvane {

/// A display that is connected, mirrored or asleep or not.
struct Display {
    /// The computer's own panel.
    bool isBuiltIn = false;

    bool operator==(const Display&) const = default;
};

/// The displays at this computer. Belongs to the main loop and does not block it.
class Displays {
public:
    Displays() = default;
    Displays(const Displays&) = delete;
    Displays& operator=(const Displays&) = delete;
    virtual ~Displays() = default;

    /// Read afresh. None when the system does not tell.
    [[nodiscard]] virtual std::optional<std::vector<Display>> online() const = 0;

    /// Runs `changed` on the main loop after displays came, went or were arranged anew. Where the system does
    /// not tell, it never runs. The displays outlive the observation.
    [[nodiscard]] virtual std::unique_ptr<Observation> observe(std::function<void()> changed) = 0;
};

}  // namespace corvane
