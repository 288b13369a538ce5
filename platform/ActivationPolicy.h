#pragma once

namespace corvane {

/// How much of an application the desktop makes of this process. Main loop.
class ActivationPolicy {
public:
    enum class Presence {
        /// It is in the menu bar or tray alone.
        accessory,
        /// It is an application among the others, with a place in the Dock or task bar.
        regular,
    };

    ActivationPolicy() = default;
    ActivationPolicy(const ActivationPolicy&) = delete;
    ActivationPolicy& operator=(const ActivationPolicy&) = delete;
    virtual ~ActivationPolicy() = default;

    /// Accessory to begin with. Without effect where each window has its own place in the task bar.
    virtual void set(Presence presence) = 0;

    /// Brings the application before all others.
    virtual void activate() = 0;
};

}  // namespace corvane
