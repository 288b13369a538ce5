#pragma once

#include <filesystem>
#include <optional>

#include "app/installer/LaunchdLocations.h"
#include "app/shell/Lang.h"
#include "platform/AppleScript.h"
#include "platform/FileSystem.h"
#include "platform/HelperInstaller.h"

namespace corvane {

/// Installs the helper for launchd, by one shell script that the system's own scripting runs as root behind
/// its administrator prompt.
class LaunchdInstaller final : public HelperInstaller {
public:
    struct Paths {
        /// The helper's program in the application bundle, under its resource "corvane-helper"; none when the
        /// bundle has no such resource.
        std::optional<std::filesystem::path> bundledHelper;
        /// The user's own.
        std::filesystem::path temporaryFolder;
        LaunchdLocations installed = {};
    };

    /// All but `paths` outlive the installer.
    LaunchdInstaller(FileSystem& files, AppleScript& scripting, const Lang& lang, Paths paths);

    [[nodiscard]] bool isInstalled() const override;
    [[nodiscard]] bool needsUpdate() const override;

    /// Blocks while the prompt is shown and the script runs; calls `done` before it returns.
    void install(Done done) override;

private:
    [[nodiscard]] InstallResult installed();
    [[nodiscard]] InstallResult runAsRoot(const std::string& shellScript);

    FileSystem& files_;
    AppleScript& scripting_;
    const Lang& lang_;
    Paths paths_;
};

}  // namespace corvane
