#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// The files that an installer looks at and writes, and that an uninstaller removes. Paths are absolute.
/// Blocks as long as a disk does; may be called from any thread.
class FileSystem {
public:
    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
    virtual ~FileSystem() = default;

    /// An ordinary file, or a link to one, is at `path`.
    [[nodiscard]] virtual bool isFile(const std::filesystem::path& path) const = 0;

    /// Writes `text` (UTF-8) as it is. Afterwards the file holds all of it, or what it held before; nothing
    /// else is left. Only its owner can read it. Returns what went wrong in the system's words, or nothing.
    [[nodiscard]] virtual std::optional<std::string> writeAtomically(const std::filesystem::path& path,
                                                                     std::string_view text) = 0;

    /// Removes a file; one that is not there, or cannot be removed, is passed over.
    virtual void remove(const std::filesystem::path& path) = 0;

    /// Removes a folder with everything in it, or a file. A link is removed, never what it leads to. What is
    /// not there, or cannot be removed, is passed over.
    virtual void removeTree(const std::filesystem::path& path) = 0;

    /// Both are ordinary files, or links to such, that can be read, and they are not the same byte for byte.
    [[nodiscard]] virtual bool differ(const std::filesystem::path& one,
                                      const std::filesystem::path& other) const = 0;
};

}  // namespace corvane
