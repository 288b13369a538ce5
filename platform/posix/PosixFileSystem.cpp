#include "platform/posix/PosixFileSystem.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <span>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/FileDescriptor.h"

namespace corvane {

namespace {

constexpr std::size_t blockSize = std::size_t{64} * 1024;

std::string lastError() {
    return std::generic_category().message(errno);
}

bool writeAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return true;
}

/// Not open when there is no ordinary file. A pipe in its place does not hold up the caller.
FileDescriptor openToRead(const std::filesystem::path& path) {
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    const bool isOrdinary = file.isOpen() && fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode);
    return isOrdinary ? std::move(file) : FileDescriptor(-1);
}

/// Fills `block` as far as the file goes; none when it cannot be read.
std::optional<std::span<const std::byte>> readBlock(const FileDescriptor& file, std::span<std::byte> block) {
    std::size_t size = 0;
    while (size < block.size()) {
        const ssize_t count = read(file.get(), block.data() + size, block.size() - size);
        if (count == 0) {
            break;
        }
        if (count < 0 && errno != EINTR) {
            return std::nullopt;
        }
        size += count < 0 ? 0 : static_cast<std::size_t>(count);
    }
    return block.first(size);
}

bool areSame(std::span<const std::byte> one, std::span<const std::byte> other) {
    return one.size() == other.size() && std::memcmp(one.data(), other.data(), one.size()) == 0;
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
    if (!writeAll(file.get(), text) || fsync(file.get()) != 0 || rename(beside.c_str(), path.c_str()) != 0) {
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
    std::vector<std::byte> blocks(2 * blockSize);
    while (true) {
        const auto first = readBlock(files[0], std::span(blocks).first(blockSize));
        const auto second = readBlock(files[1], std::span(blocks).last(blockSize));
        if (!first || !second) {
            return false;
        }
        if (!areSame(*first, *second)) {
            return true;
        }
        if (first->size() < blockSize) {
            return false;
        }
    }
}

}  // namespace corvane
