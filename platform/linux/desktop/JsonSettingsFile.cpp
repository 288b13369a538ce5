#include "platform/linux/desktop/JsonSettingsFile.h"

#include <QJsonDocument>
#include <QSaveFile>
#include <cerrno>
#include <span>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/FileTransfers.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;

/// More links in a row than the system itself follows.
constexpr int mostLinks = 40;
/// Damaged files that are kept.
constexpr int mostSetAside = 1000;
constexpr std::string_view damagedSuffix = ".damaged";

FileStamp stampOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

std::string textOf(int error) {
    return std::system_category().message(error);
}

/// The file that `path` leads to, whether it exists or not.
fs::path followLinks(fs::path path) {
    std::error_code error;
    for (int links = 0; links < mostLinks && fs::is_symlink(path, error); ++links) {
        path = path.parent_path() / fs::read_symlink(path, error);
    }
    return path;
}

/// Puts on the disk which names are in the folder. Not every file system can; the names hold all the same as
/// long as the system runs.
void syncFolder(const fs::path& folder) {
    const FileDescriptor names(
        open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY));
    if (names.isOpen()) {
        fsync(names.get());
    }
}

std::optional<std::string> makePrivateFolder(const fs::path& folder) {
    std::error_code error;
    if (folder.empty() || fs::is_directory(folder, error)) {
        return std::nullopt;
    }
    if (auto failure = makePrivateFolder(folder.parent_path())) {
        return failure;
    }
    // Made by others just now, or no folder, which shows when something is made in it.
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        return textOf(errno);
    }
    syncFolder(folder.parent_path());
    return std::nullopt;
}

/// Up to one byte more than is allowed; none on an error, which is in `errno`.
std::optional<QByteArray> readAll(const FileDescriptor& file) {
    QByteArray bytes(JsonSettingsFile::maxSize + 1, Qt::Uninitialized);
    const auto size = readFully(file, std::span(bytes.data(), static_cast<std::size_t>(bytes.size())));
    if (!size) {
        return std::nullopt;
    }
    bytes.truncate(static_cast<qsizetype>(*size));
    return bytes;
}

JsonSettingsFile::Contents parse(const QByteArray& bytes) {
    if (bytes.size() > JsonSettingsFile::maxSize) {
        return JsonSettingsFile::Damaged{fmt::format("larger than {} bytes", JsonSettingsFile::maxSize)};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        return JsonSettingsFile::Damaged{
            fmt::format("{} at byte {}", error.errorString().toStdString(), error.offset)};
    }
    if (!document.isObject()) {
        return JsonSettingsFile::Damaged{"not a JSON object"};
    }
    return document.object();
}

QByteArray toBytes(const QJsonObject& contents) {
    return QJsonDocument(contents).toJson(QJsonDocument::Indented);
}

/// What follows the name of `file` in that of another one beside it; none when it has another name.
std::optional<std::string> suffixOf(const fs::path& other, const fs::path& file) {
    const std::string name = other.filename().string();
    const std::string base = file.filename().string();
    return name.starts_with(base) ? std::optional(name.substr(base.size())) : std::nullopt;
}

bool isDamaged(std::string_view suffix) {
    if (!suffix.starts_with(damagedSuffix)) {
        return false;
    }
    suffix.remove_prefix(damagedSuffix.size());
    return suffix.empty() || (suffix.starts_with('-') && suffix.size() > 1 &&
                              suffix.find_first_not_of("0123456789", 1) == std::string_view::npos);
}

/// Removes a file, and the damaged ones beside it.
void removeWithDamaged(const fs::path& file) {
    std::error_code ignored;
    for (fs::directory_iterator entry(file.parent_path(), ignored), end; entry != end;
         entry.increment(ignored)) {
        const std::optional<std::string> suffix = suffixOf(entry->path(), file);
        std::error_code failed;
        if (suffix && (suffix->empty() || isDamaged(*suffix)) &&
            !fs::is_directory(entry->symlink_status(failed))) {
            fs::remove(entry->path(), failed);
        }
    }
}

}  // namespace

JsonSettingsFile::Contents JsonSettingsFile::read() {
    known_ = std::nullopt;
    // A pipe in the file's place must not hold anything up.
    const FileDescriptor file(open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen()) {
        return errno == ENOENT ? Contents(Absent{}) : Contents(Unreadable{textOf(errno)});
    }
    struct stat status {};
    if (fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return Unreadable{"not a file"};
    }
    known_ = stampOf(status);
    const std::optional<QByteArray> bytes = readAll(file);
    return bytes ? parse(*bytes) : Contents(Unreadable{textOf(errno)});
}

std::optional<std::string> JsonSettingsFile::write(const QJsonObject& contents) {
    const QByteArray bytes = toBytes(contents);
    if (bytes.size() > maxSize) {
        return fmt::format("larger than {} bytes", maxSize);
    }
    const fs::path target = followLinks(path_);
    if (auto failure = makePrivateFolder(target.parent_path())) {
        return failure;
    }
    QSaveFile file(QString::fromStdString(target.string()));
    // Buffered, a write that fails would be found out about too late.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        !file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) ||
        file.write(bytes) != bytes.size()) {
        return file.errorString().toStdString();
    }
    struct stat status {};
    const bool isKnown = fstat(file.handle(), &status) == 0;
    if (!file.commit()) {
        return file.errorString().toStdString();
    }
    syncFolder(target.parent_path());
    known_ = isKnown ? std::optional(stampOf(status)) : std::nullopt;
    return std::nullopt;
}

bool JsonSettingsFile::hasChanged() const {
    struct stat status {};
    const bool exists = stat(path_.c_str(), &status) == 0;
    return (exists ? std::optional(stampOf(status)) : std::nullopt) != known_;
}

bool JsonSettingsFile::isTooLarge(const QJsonObject& contents) {
    return toBytes(contents).size() > maxSize;
}

std::variant<fs::path, std::string> JsonSettingsFile::setAside() const {
    const fs::path from = followLinks(path_);
    std::error_code error;
    for (int number = 1; number <= mostSetAside; ++number) {
        fs::path to = from;
        to += number == 1 ? std::string(damagedSuffix) : fmt::format("{}-{}", damagedSuffix, number);
        if (fs::symlink_status(to, error).type() != fs::file_type::not_found) {
            continue;
        }
        fs::rename(from, to, error);
        if (error) {
            return error.message();
        }
        return to;
    }
    return fmt::format("there are {} damaged ones already", mostSetAside);
}

void JsonSettingsFile::erase() const {
    const fs::path target = followLinks(path_);
    if (target != path_) {
        removeWithDamaged(target);
    }
    removeWithDamaged(path_);
    std::error_code notEmpty;
    fs::remove(path_.parent_path(), notEmpty);
}

}  // namespace corvane
