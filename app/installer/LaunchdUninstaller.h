#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/installer/LaunchdLocations.h"
#include "app/shell/Lang.h"
#include "platform/AppleScript.h"
#include "platform/FileSystem.h"
#include "platform/LoginItem.h"
#include "platform/Trash.h"
#include "platform/Uninstaller.h"
#include "platform/UserDefaults.h"

namespace corvane {

/// Removes what launchd runs and the application's bundle, by one shell script that the system's own
/// scripting runs as root behind its administrator prompt.
class LaunchdUninstaller final : public Uninstaller {
public:
    /// What it needs of the system and of the application; all of it outlives the uninstaller.
    struct Services {
        AppleScript& scripting;
        const Lang& lang;
        LoginItem& loginItem;
        UserDefaults& defaults;
        FileSystem& files;
        Trash& trash;
    };

    struct Paths {
        /// The application's.
        std::filesystem::path bundle;
        /// The user's home folder.
        std::filesystem::path home;
        /// The bundle's identifier, which the user's files are named after; none when it is not known.
        std::optional<std::string> identifier;
        LaunchdLocations installed = {};
    };

    LaunchdUninstaller(const Services& services, Paths paths);

    /// Blocks while the prompt is shown and the script runs; calls `done` before it returns.
    void performPrivilegedRemoval(Done done) override;

    void clearUserTraces() override;

private:
    void removeSettings();
    void removeFiles();

    Services services_;
    Paths paths_;
};

}  // namespace corvane
