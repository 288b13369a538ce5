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

    /// Announces the change before it returns, if it is one.
    void set(const Identifiers& identifiers) {
        if (std::exchange(identifiers_, identifiers) != identifiers) {
            observers_.notify();
        }
    }
    void start(const std::string& identifier) {
        Identifiers running = identifiers_;
        running.insert(identifier);
        set(running);
    }
    void quit(const std::string& identifier) {
        Identifiers running = identifiers_;
        running.erase(identifier);
        set(running);
    }

    /// Changes them without a word, as where the system does not tell.
    void setSilently(Identifiers identifiers) { identifiers_ = std::move(identifiers); }

private:
    Identifiers identifiers_;
    Observers observers_;
};

}  // namespace corvane
