#pragma once

#include <utility>

#include "platform/HelperInstaller.h"

namespace corvane {

/// A helper that serves on a bus of somebody's own, for development and demonstration: whoever runs the bus
/// runs the helper, and there is nothing to install.
class SuppliedHelper final : public HelperInstaller {
public:
    [[nodiscard]] bool isInstalled() const override { return true; }
    [[nodiscard]] bool needsUpdate() const override { return false; }
    void install(Done done) override {
        done(InstallResult::failure("the helper of a private bus is started by whoever runs that bus"));
    }
};

}  // namespace corvane
