#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <sys/types.h>

#include "platform/linux/desktop/DesktopFile.h"
#include "platform/linux/desktop/EnvironmentLookup.h"

namespace corvane {

/// The desktop files of the installed applications. One thread; waits for the disk.
///
/// Read when they are first asked for and again when one of their folders changed. A bounded number of files
/// in a bounded depth of folders. The identifier of a file is its path below its folder, "-" for "/" and
/// without ".desktop"; of files with the same one the first folder's counts.
class DesktopFiles {
public:
    /// Absolute paths, the most important first. Such folders need not exist.
    explicit DesktopFiles(std::vector<std::string> folders, DesktopViewer viewer = {})
        : folders_(std::move(folders)), viewer_(std::move(viewer)) {}

    /// Sees to it that what follows is up to date. True when it read the files.
    bool refresh();

    /// The identifier of the application that a program of this name belongs to. Of several, one that is in
    /// the menus, then the one that starts it most plainly.
    [[nodiscard]] std::optional<std::string> applicationOf(std::string_view program) const;

    /// By identifier; without those that the user took away.
    [[nodiscard]] const std::map<std::string, DesktopFile>& files() const { return byIdentifier_; }

private:
    /// What tells whether a folder has changed.
    struct Stamp {
        dev_t device = 0;
        ino_t inode = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;

        bool operator==(const Stamp&) const = default;
    };

    static Stamp stampOf(const std::string& folder);
    [[nodiscard]] bool isUnchanged() const;
    void readFolder(const std::string& folder, const std::string& prefix, int depth);
    void readFile(const std::string& path, const std::string& identifier);
    void sortByProgram();

    std::vector<std::string> folders_;
    DesktopViewer viewer_;
    /// By path, as they were when they were last read, with what is below them.
    std::map<std::string, Stamp> stamps_;
    /// They were the same twice: what changes while it is read, or within the clock's resolution, shows then.
    bool isSettled_ = false;
    std::size_t filesRead_ = 0;
    std::map<std::string, DesktopFile> byIdentifier_;
    std::map<std::string, std::string, std::less<>> byProgram_;
};

/// The folders of desktop files that the environment names: the user's own, then the system's.
[[nodiscard]] std::vector<std::string> desktopFileFolders(const EnvironmentLookup& environment);

/// The names that the user's desktop goes by, as the environment has them; empty when it has none.
[[nodiscard]] std::vector<std::string> desktopNames(const EnvironmentLookup& environment);

}  // namespace corvane
