#pragma once

#include <utility>

#include "platform/HelperInstaller.h"

namespace corvane {

/// An installer whose prompt the test answers. Main loop.
class SimulatedInstaller final : public HelperInstaller {
public:
    [[nodiscard]] bool isInstalled() const override { return isInstalled_; }
    [[nodiscard]] bool needsUpdate() const override { return needsUpdate_; }
    void install(Done done) override {
        ++prompts_;
        done_ = std::move(done);
    }

    void setInstalled(bool installed) { isInstalled_ = installed; }
    void setNeedsUpdate(bool needsUpdate) { needsUpdate_ = needsUpdate; }

    /// Ends the installation under way.
    void finish(InstallResult result) {
        isInstalled_ = isInstalled_ || result == InstallResult::success();
        std::exchange(done_, nullptr)(std::move(result));
    }

    /// How often the user was asked.
    [[nodiscard]] int prompts() const { return prompts_; }

private:
    bool isInstalled_ = true;
    bool needsUpdate_ = false;
    int prompts_ = 0;
    Done done_;
};

}  // namespace corvane
