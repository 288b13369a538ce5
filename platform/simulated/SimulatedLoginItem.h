#pragma once

#include "platform/LoginItem.h"

namespace corvane {

/// A login item that counts how often it was changed; off to begin with. Main loop.
class SimulatedLoginItem final : public LoginItem {
public:
    [[nodiscard]] bool isEnabled() const override { return isEnabled_; }
    bool setEnabled(bool on) override {
        if (isEnabled_ != on && !isBroken_) {
            isEnabled_ = on;
            ++changes_;
        }
        return isEnabled_ == on;
    }

    /// From now on changes fail.
    void breakDown() { isBroken_ = true; }
    [[nodiscard]] int changes() const { return changes_; }

private:
    bool isEnabled_ = false;
    bool isBroken_ = false;
    int changes_ = 0;
};

}  // namespace corvane
