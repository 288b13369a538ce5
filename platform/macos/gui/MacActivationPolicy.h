#pragma once

#include "platform/ActivationPolicy.h"

namespace corvane {

/// What a Mac makes of this process: nothing but its status item, or an application in the Dock with a menu
/// bar. Main thread.
class MacActivationPolicy final : public ActivationPolicy {
public:
    /// Accessory at once.
    MacActivationPolicy();

    void set(Presence presence) override;
    void activate() override;
};

}  // namespace corvane
