#include "platform/posix/PosixFileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <span>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/FileTransfers.h"

namespace corvane {

namespace {

constexpr std::size_t blockSize = std::size_t{64} * 1024;

std::string lastError() {
    return std::generic_category().message(errno);
}

/// Not open when there is no ordinary file. A pipe in its place does not hold up the caller.
FileDescriptor openToRead(const std::filesystem::path& path) {
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    const bool isOrdinary = file.isOpen() && fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode);
    return isOrdinary ? std::move(file) : FileDescriptor(-1);
}

}  // namespace

bool PosixFileSystem::isFile(const std::filesystem::path& path) const {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

std::optional<std::string> PosixFileSystem::writeAtomically(const std::filesystem::path& path,
                                                            std::string_view text) {
    std::string beside = path.string() + ".XXXXXX";
    const FileDescriptor file(mkostemp(beside.data(), O_CLOEXEC));
    if (!file.isOpen()) {
        return lastError();
    }
    if (!writeFully(file, text) || fsync(file.get()) != 0 || rename(beside.c_str(), path.c_str()) != 0) {
        std::string error = lastError();
        unlink(beside.c_str());
        return error;
    }
    return std::nullopt;
}

void PosixFileSystem::remove(const std::filesystem::path& path) {
    unlink(path.c_str());
}

void PosixFileSystem::removeTree(const std::filesystem::path& path) {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

bool PosixFileSystem::differ(const std::filesystem::path& one, const std::filesystem::path& other) const {
    const FileDescriptor files[] = {openToRead(one), openToRead(other)};
    if (!files[0].isOpen() || !files[1].isOpen()) {
        return false;
    }
    std::vector<char> blocks(2 * blockSize);
    const auto first = std::span(blocks).first(blockSize);
    const auto second = std::span(blocks).last(blockSize);
    while (true) {
        const auto firstSize = readFully(files[0], first);
        const auto secondSize = readFully(files[1], second);
        if (!firstSize || !secondSize) {
            return false;
        }
        if (!std::ranges::equal(first.first(*firstSize), second.first(*secondSize))) {
            return true;
        }
        if (*firstSize < blockSize) {
            return false;
        }
    }
}

}  // namespace corvane
