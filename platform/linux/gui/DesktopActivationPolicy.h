#pragma once

#include "platform/ActivationPolicy.h"

namespace corvane {

/// A desktop gives each window its own place in the task bar, and an application without windows none. Main
/// loop.
class DesktopActivationPolicy final : public ActivationPolicy {
public:
    void set(Presence /*presence*/) override {}
    /// Windows come to the front one by one.
    void activate() override {}
};

}  // namespace corvane
