#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/LoginItem.h"
#include "platform/Uninstaller.h"
#include "platform/UserDefaults.h"
#include "platform/linux/desktop/EnvironmentLookup.h"
#include "platform/linux/desktop/PkexecScript.h"

namespace corvane {

/// Removes what takes root by one run of `pkexec uninstall`; the script (packaging/linux) belongs to the
/// application, knows what the application and its installer have put where, and takes no orders. Lives on a
/// thread with a Qt event loop, the application's main loop.
class PkexecUninstaller final : public Uninstaller {
public:
    struct Paths {
        /// The application's own folder with the script; absolute.
        std::filesystem::path folder;
        /// What the application leaves in the user's folders besides its settings.
        std::vector<std::filesystem::path> traces;
        /// A name to be looked up in $PATH, or a path.
        std::string pkexec = "pkexec";
    };

    /// All but `paths` outlive the uninstaller.
    PkexecUninstaller(LoginItem& loginItem, UserDefaults& defaults, FileSystem& files, const Paths& paths);

    /// Returns at once. While the prompt is up, the end of the uninstaller takes it away, and nothing is
    /// removed; a removal that was agreed to runs to its end by itself.
    void performPrivilegedRemoval(Done done) override;

    void clearUserTraces() override;

private:
    LoginItem& loginItem_;
    UserDefaults& defaults_;
    FileSystem& files_;
    std::vector<std::filesystem::path> traces_;
    PkexecScript script_;
};

/// What the application leaves in the user's folders besides its settings, as `xdgFolder` finds them.
[[nodiscard]] std::vector<std::filesystem::path> userTraces(const EnvironmentLookup& environment);

}  // namespace corvane
