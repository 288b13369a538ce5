#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Displays.h"
#include "platform/Observers.h"

namespace corvane {

/// Displays that are what they are set to; the computer's own to begin with. Main loop.
class SimulatedDisplays final : public Displays {
public:
    using Online = std::optional<std::vector<Display>>;

    [[nodiscard]] Online online() const override { return online_; }

    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override {
        return observers_.add(std::move(changed));
    }

    /// Announces the displays before it returns, if they are others.
    void set(const Online& online) {
        if (std::exchange(online_, online) != online) {
            observers_.notify();
        }
    }

    /// Changes them without a word, as where the system does not tell.
    void setSilently(Online online) { online_ = std::move(online); }

private:
    Online online_ = std::vector{Display{.isBuiltIn = true}};
    Observers observers_;
};

}  // namespace corvane
