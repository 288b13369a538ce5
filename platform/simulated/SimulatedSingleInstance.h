#pragma once

#include <functional>
#include <utility>

#include "platform/SingleInstance.h"

namespace corvane {

/// A start that is what it is told to be; the first one to begin with. Main loop.
class SimulatedSingleInstance final : public SingleInstance {
public:
    explicit SimulatedSingleInstance(Start start = {}) : start_(std::move(start)) {}

    [[nodiscard]] Start claim(std::function<void()> openRequested) override {
        openRequested_ = std::move(openRequested);
        return start_;
    }

    /// The application is started once more.
    void startAgain() const {
        if (openRequested_) {
            openRequested_();
        }
    }

private:
    Start start_;
    std::function<void()> openRequested_;
};

}  // namespace corvane
