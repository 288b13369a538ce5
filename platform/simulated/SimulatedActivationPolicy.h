#pragma once

#include "platform/ActivationPolicy.h"

namespace corvane {

/// An activation policy that remembers what was asked of it. Main loop.
class SimulatedActivationPolicy final : public ActivationPolicy {
public:
    void set(Presence presence) override { presence_ = presence; }
    void activate() override { ++activations_; }

    [[nodiscard]] Presence presence() const { return presence_; }
    /// How often the application was brought to the front.
    [[nodiscard]] int activations() const { return activations_; }

private:
    Presence presence_ = Presence::accessory;
    int activations_ = 0;
};

}  // namespace corvane
