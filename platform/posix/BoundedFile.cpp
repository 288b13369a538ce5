#include "platform/posix/BoundedFile.h"

#include <algorithm>
#include <array>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/posix/FileTransfers.h"

namespace corvane {

std::string readAtMost(const std::string& path, std::size_t limit) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat info = {};
    if (!file.isOpen() || fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode)) {
        return {};
    }
    std::string content;
    std::array<char, 4096> buffer{};
    bool hasEnded = false;
    while (!hasEnded && content.size() < limit) {
        const auto block = std::span(buffer).first(std::min(buffer.size(), limit - content.size()));
        const auto size = readFully(file, block);
        if (!size) {
            return {};
        }
        content.append(block.data(), *size);
        hasEnded = *size < block.size();
    }
    return content;
}

}  // namespace corvane
