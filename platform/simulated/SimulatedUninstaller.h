#pragma once

#include <utility>

#include "platform/Uninstaller.h"

namespace corvane {

/// An uninstaller whose prompt the test answers. Main loop.
class SimulatedUninstaller final : public Uninstaller {
public:
    void performPrivilegedRemoval(Done done) override {
        ++prompts_;
        done_ = std::move(done);
    }
    void clearUserTraces() override { ++clearings_; }

    /// Ends the removal under way.
    void finish(InstallResult result) { std::exchange(done_, nullptr)(std::move(result)); }

    /// How often the user was asked for a password.
    [[nodiscard]] int prompts() const { return prompts_; }
    /// How often the user's traces were cleared.
    [[nodiscard]] int clearings() const { return clearings_; }

private:
    int prompts_ = 0;
    int clearings_ = 0;
    Done done_;
};

}  // namespace corvane
