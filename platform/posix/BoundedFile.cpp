#include "platform/posix/BoundedFile.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/FileDescriptor.h"

namespace corvane {

std::string readAtMost(const std::string& path, std::size_t limit) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat info = {};
    if (!file.isOpen() || fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode)) {
        return {};
    }
    std::string content;
    std::array<char, 4096> buffer{};
    ssize_t count = 1;
    while (count > 0 && content.size() < limit) {
        count = read(file.get(), buffer.data(), std::min(buffer.size(), limit - content.size()));
        if (count < 0 && errno != EINTR) {
            return {};
        }
        content.append(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
        count = count < 0 ? 1 : count;
    }
    return content;
}

}  // namespace corvane
