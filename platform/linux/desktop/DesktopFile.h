#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What a desktop file says about the application that it starts.
struct DesktopFile {
    /// The names of the programs that run when it does, without their folders: of TryExec, and of Exec unless
    /// that is one that runs all sorts of things, such as a shell. May be empty.
    std::vector<std::string> programs;
    /// How many fixed arguments its program gets. The more, the more special a use of the program it is.
    int argumentCount = 0;
    /// It stands for an application that was taken away by the user.
    bool isHidden = false;
    /// It is there to open files and addresses with, say, and not in the menus.
    bool isOutOfMenus = false;

    bool operator==(const DesktopFile&) const = default;
};

/// Reads a desktop file's text; none when it is not an application's.
[[nodiscard]] std::optional<DesktopFile> readDesktopFile(std::string_view text);

/// Whether a program of this name runs all sorts of things: a shell, an interpreter, a starter.
[[nodiscard]] bool runsAllSorts(std::string_view program);

/// The last part of a path.
[[nodiscard]] std::string_view fileNameOf(std::string_view path);

}  // namespace corvane
