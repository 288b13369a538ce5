#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/Appearance.h"
#include "platform/Observers.h"

namespace corvane {

/// An appearance that is what it is set to; light to begin with. Main loop.
class SimulatedAppearance final : public Appearance {
public:
    [[nodiscard]] bool isDark() const override { return isDark_; }

    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override {
        return observers_.add(std::move(changed));
    }

    /// Announces the appearance before it returns, if it is another.
    void setDark(bool isDark) {
        if (std::exchange(isDark_, isDark) != isDark) {
            observers_.notify();
        }
    }

private:
    bool isDark_ = false;
    Observers observers_;
};

}  // namespace corvane
