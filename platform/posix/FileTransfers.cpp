#include "platform/posix/FileTransfers.h"

#include <cerrno>

#include <unistd.h>

namespace corvane {

std::optional<std::size_t> readFully(const FileDescriptor& file, std::span<char> block) {
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
    return size;
}

bool writeFully(const FileDescriptor& file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(file.get(), text.data(), text.size());
        if (count == 0) {
            // A file that takes nothing and gives no reason would be asked for ever.
            errno = EIO;
        }
        if (count == 0 || (count < 0 && errno != EINTR)) {
            return false;
        }
        text.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace corvane
