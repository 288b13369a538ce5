#include "platform/linux/hwmon/DirectorySysfs.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/FileDescriptor.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;

/// Far more than any device has.
constexpr std::size_t maxEntries = 4096;

class FileAttribute final : public SysfsAttribute {
public:
    explicit FileAttribute(FileDescriptor file) : file_(std::move(file)) {}

    int read(std::span<char> buffer) override {
        const ssize_t count = ::pread(file_.get(), buffer.data(), buffer.size(), 0);
        return count < 0 ? -errno : static_cast<int>(count);
    }

    int write(std::string_view text) override {
        const ssize_t count = ::pwrite(file_.get(), text.data(), text.size(), 0);
        if (count < 0) {
            return errno;
        }
        return static_cast<std::size_t>(count) == text.size() ? 0 : EIO;
    }

private:
    FileDescriptor file_;
};

/// The kernel refuses what the mode bits do not allow to root as well; a copy of its tree on an ordinary file
/// system does so through this check.
bool allows(const FileDescriptor& file, mode_t wanted) {
    struct stat info = {};
    return ::fstat(file.get(), &info) == 0 && S_ISREG(info.st_mode) && (info.st_mode & wanted) == wanted;
}

}  // namespace

DirectorySysfs::DirectorySysfs(std::string root) : root_(std::move(root)) {
    std::error_code error;
    if (const fs::path real = fs::canonical(root_, error); !error) {
        root_ = real.string();
    }
}

std::vector<std::string> DirectorySysfs::list(const std::string& directory) {
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator entry(root_ + "/" + directory, error);
    for (; !error && entry != fs::directory_iterator() && names.size() < maxEntries; entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::optional<std::string> DirectorySysfs::canonicalPath(const std::string& path) {
    std::error_code error;
    const std::string real = fs::canonical(root_ + "/" + path, error).string();
    const std::string prefix = root_ + "/";
    if (error || real.size() <= prefix.size() || !real.starts_with(prefix)) {
        return std::nullopt;
    }
    return real.substr(prefix.size());
}

std::unique_ptr<SysfsAttribute> DirectorySysfs::open(const std::string& path, SysfsAccess access) {
    const bool writes = access == SysfsAccess::readWrite;
    // O_NONBLOCK: a pipe in a copied tree must not hold up its reader.
    FileDescriptor file(
        ::open((root_ + "/" + path).c_str(), (writes ? O_RDWR : O_RDONLY) | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen() || !allows(file, writes ? S_IRUSR | S_IWUSR : S_IRUSR)) {
        return nullptr;
    }
    return std::make_unique<FileAttribute>(std::move(file));
}

}  // namespace corvane
