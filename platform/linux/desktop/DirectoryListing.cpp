#include "platform/linux/desktop/DirectoryListing.h"

#include <algorithm>
#include <array>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/posix/FileDescriptor.h"

namespace corvane {

namespace {

/// So many are tried: some may be empty, or may not be read.
constexpr std::size_t maxFiles = 8;

/// What reading past the cache is done in: a multiple of every drive's blocks, and aligned to it.
constexpr std::size_t block = 4096;

/// Adds the names of ordinary files among the entries.
void noteFiles(const char* entries, std::size_t length, std::vector<std::string>& files) {
    for (std::size_t i = 0; i < length && files.size() < maxFiles;) {
        // The kernel's record is laid out like the library's.
        const auto* entry = reinterpret_cast<const dirent64*>(entries + i);
        if (entry->d_type == DT_REG) {
            files.emplace_back(entry->d_name);
        }
        i += entry->d_reclen;
    }
}

constexpr int quietly = O_RDONLY | O_DIRECT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

/// Without a note of the access where the file is the user's own: others' files do not allow that.
int openPastCache(const FileDescriptor& directory, const char* name) {
    const int file = openat(directory.get(), name, quietly | O_NOATIME);
    return file >= 0 ? file : openat(directory.get(), name, quietly);
}

/// False when nothing was read from the drive.
bool readPastCache(const FileDescriptor& directory, const std::string& name) {
    const FileDescriptor file(openPastCache(directory, name.c_str()));
    alignas(block) std::array<char, block> beginning;
    return file.isOpen() && read(file.get(), beginning.data(), beginning.size()) > 0;
}

}  // namespace

std::size_t listDirectory(const std::string& path) {
    const FileDescriptor directory(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    std::size_t total = 0;
    std::vector<std::string> files;
    alignas(dirent64) std::array<char, 32 * 1024> entries;
    while (directory.isOpen() && total < maxListedBytes) {
        // Not readdir(), whose reader has its own idea of when to stop.
        const long result = syscall(SYS_getdents64, directory.get(), entries.data(), entries.size());
        if (result <= 0) {
            break;
        }
        const auto length = static_cast<std::size_t>(result);
        noteFiles(entries.data(), length, files);
        total += length;
    }
    static_cast<void>(
        std::ranges::any_of(files, [&](const auto& name) { return readPastCache(directory, name); }));
    return total;
}

}  // namespace corvane
