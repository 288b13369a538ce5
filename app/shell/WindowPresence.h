#pragma once

#include <memory>

#include "platform/ActivationPolicy.h"

namespace corvane {

/// Makes the application a regular one while at least one of its windows is open, and an accessory otherwise.
/// Main loop.
class WindowPresence {
public:
    /// `policy` outlives the presence.
    explicit WindowPresence(ActivationPolicy& policy) : policy_(policy) {}

    /// An open window; it has been closed when this is destroyed. The presence outlives it.
    class OpenWindow {
    public:
        explicit OpenWindow(WindowPresence& presence);
        OpenWindow(const OpenWindow&) = delete;
        OpenWindow& operator=(const OpenWindow&) = delete;
        ~OpenWindow();

    private:
        WindowPresence& presence_;
    };

    /// A window opens.
    [[nodiscard]] std::unique_ptr<OpenWindow> opened();

    /// Brings the application before all others.
    void activate() { policy_.activate(); }

private:
    ActivationPolicy& policy_;
    int openWindows_ = 0;
};

}  // namespace corvane
