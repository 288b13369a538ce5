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
    /// It is there to open files and addresses with, say, or is another desktop's, and not in the menus.
    bool isOutOfMenus = false;
    /// What people call it, in their language.
    std::string name;
    /// A name in the icon theme or an absolute path; empty for none.
    std::string iconName;

    bool operator==(const DesktopFile&) const = default;
};

/// Who looks at desktop files.
struct DesktopViewer {
    /// Tags such as "de-CH", best first.
    std::vector<std::string> languages;
    /// The names that the user's desktop goes by; empty when it is not known: then applications of every
    /// desktop count.
    std::vector<std::string> desktops;
};

/// Reads a desktop file's text; none when it is not an application's.
[[nodiscard]] std::optional<DesktopFile> readDesktopFile(std::string_view text,
                                                         const DesktopViewer& viewer = {});

/// Whether a program of this name runs all sorts of things: a shell, an interpreter, a starter.
[[nodiscard]] bool runsAllSorts(std::string_view program);

/// The last part of a path.
[[nodiscard]] std::string_view fileNameOf(std::string_view path);

}  // namespace corvane
