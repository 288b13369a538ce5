#pragma once

#include <functional>

#include "platform/HelperInstaller.h"

namespace corvane {

/// Removes everything of the product from the machine, in two steps. Belongs to the main loop.
class Uninstaller {
public:
    using Done = std::function<void(InstallResult result)>;

    Uninstaller() = default;
    Uninstaller(const Uninstaller&) = delete;
    Uninstaller& operator=(const Uninstaller&) = delete;
    virtual ~Uninstaller() = default;

    /// Shows the administrator prompt and removes what takes root: the helper, which hands the fans back
    /// first, its registration and its log, and the application's program. What is missing already is no
    /// error. `done` runs once on the main loop, be it inside this call or later; not at all when the
    /// uninstaller is destroyed first. Not called again before that.
    virtual void performPrivilegedRemoval(Done done) = 0;

    /// Removes what the application left in the user's own folders: the login item, all settings, caches.
    /// Each step ignores its errors.
    virtual void clearUserTraces() = 0;
};

}  // namespace corvane
