#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/Observers.h"
#include "platform/RunningApplications.h"

namespace corvane {

/// Applications that run when they are told to; none to begin with. Main loop.
class SimulatedRunningApplications final : public RunningApplications {
public:
    [[nodiscard]] Identifiers identifiers() const override { return identifiers_; }

    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override {
        return observers_.add(std::move(changed));
    }

    // Both announce the change before they return, if it is one.
    void start(const std::string& identifier) {
        if (identifiers_.insert(identifier).second) {
            observers_.notify();
        }
    }
    void quit(const std::string& identifier) {
        if (identifiers_.erase(identifier) != 0) {
            observers_.notify();
        }
    }

    /// Changes them without a word, as where the system does not tell.
    void setSilently(Identifiers identifiers) { identifiers_ = std::move(identifiers); }

private:
    Identifiers identifiers_;
    Observers observers_;
};

}  // namespace corvane
