#pragma once

#include "platform/Uninstaller.h"

namespace corvane {

/// The application with a helper on a bus of somebody's own, for development and demonstration: neither was
/// installed, and nothing is removed.
class PrivateBusUninstaller final : public Uninstaller {
public:
    void performPrivilegedRemoval(Done done) override {
        done(InstallResult::failure(
            "with a helper on a private bus nothing is installed that could be removed"));
    }
    void clearUserTraces() override {}
};

}  // namespace corvane
