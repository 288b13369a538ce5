#pragma once

#include <filesystem>
#include <string>

#include "platform/FileSystem.h"
#include "platform/HelperInstaller.h"
#include "platform/linux/desktop/PkexecScript.h"

namespace corvane {

/// Installs the helper by one run of `pkexec install-helper`; the script (packaging/linux) belongs to the
/// application and installs what lies beside it. Lives on a thread with a Qt event loop, the application's
/// main loop.
class PkexecInstaller final : public HelperInstaller {
public:
    /// The files that make a helper an installed one.
    struct Helper {
        std::filesystem::path program;
        std::filesystem::path activation;
    };

    struct Paths {
        /// The application's own folder with corvane-helper, install-helper and what that installs; absolute.
        std::filesystem::path folder;
        /// Where install-helper puts the helper.
        Helper installed = {"/usr/local/libexec/corvane/corvane-helper",
                            "/usr/local/share/dbus-1/system-services/de.tavrin.corvane.smchelper.service"};
        /// Where a package puts it, and looks after it.
        Helper packaged = {"/usr/libexec/corvane/corvane-helper",
                           "/usr/share/dbus-1/system-services/de.tavrin.corvane.smchelper.service"};
        /// A name to be looked up in $PATH, or a path.
        std::string pkexec = "pkexec";
    };

    /// `files` outlives the installer.
    PkexecInstaller(const FileSystem& files, Paths paths);

    /// From the installer or from a package.
    [[nodiscard]] bool isInstalled() const override;

    /// An installed helper takes precedence over a packaged one, as it does for the service manager and the
    /// bus.
    [[nodiscard]] bool needsUpdate() const override;

    /// Returns at once. While the prompt is up, the end of the installer takes it away, and nothing is
    /// installed; an installation that was agreed to runs to its end by itself.
    void install(Done done) override;

private:
    [[nodiscard]] bool isPresent(const Helper& helper) const;

    const FileSystem& files_;
    Paths paths_;
    PkexecScript script_;
};

}  // namespace corvane
