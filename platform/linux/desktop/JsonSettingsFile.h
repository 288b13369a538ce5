#pragma once

#include <QJsonObject>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <tuple>
#include <variant>

namespace corvane {

/// What tells one state of a file from another: device, inode, size, and the seconds and nanoseconds of its
/// last change.
using FileStamp = std::tuple<std::uint64_t, std::uint64_t, std::int64_t, std::int64_t, std::int64_t>;

/// The file that settings are kept in: one JSON object, read and written as a whole. Knows nothing of what
/// the settings mean. Belongs to one thread.
///
/// Where the path is a symbolic link it stays one, and all of this happens to the file that it points to.
class JsonSettingsFile {
public:
    /// In bytes. What is larger is neither read nor written.
    static constexpr std::int64_t maxSize = 1 << 20;

    struct Absent {};
    /// The file was read, or is too large to be, and is no JSON object.
    struct Damaged {
        std::string reason;
    };
    /// The system does not let it be read, or it is no file at all.
    struct Unreadable {
        std::string reason;
    };
    using Contents = std::variant<Absent, QJsonObject, Damaged, Unreadable>;

    explicit JsonSettingsFile(std::filesystem::path path) : path_(std::move(path)) {}

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    [[nodiscard]] Contents read();

    /// Replaces the file, which at every moment is the old or the new one. When this returns the new one is
    /// on the disk, name and all, as far as the file system can promise that. Only the user can read it;
    /// folders that are missing are made alike. Returns why not if it failed; the old file is there then.
    [[nodiscard]] std::optional<std::string> write(const QJsonObject& contents);

    /// Whether the file is another one than was last read or written here.
    [[nodiscard]] bool hasChanged() const;

    [[nodiscard]] static bool isTooLarge(const QJsonObject& contents);

    /// Renames the file to its name with ".damaged", and if that is taken ".damaged-2" and so on, behind it.
    /// Returns the new path or why there is none.
    [[nodiscard]] std::variant<std::filesystem::path, std::string> setAside() const;

    /// Removes the file and the damaged ones that were set aside. A link goes with what it leads to. Then its
    /// folder goes as well, unless there is something else in it: what a loss of power left unfinished has a
    /// name that any copy of the user's might have. What cannot be removed is passed over.
    void erase() const;

private:
    std::filesystem::path path_;
    /// None when there was no file.
    std::optional<FileStamp> known_;
};

}  // namespace corvane
