#include "platform/linux/desktop/DirectoryListing.h"

#include <array>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/posix/FileDescriptor.h"

namespace corvane {

std::size_t listDirectory(const std::string& path) {
    const FileDescriptor directory(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    std::size_t total = 0;
    std::array<char, 32 * 1024> entries;
    while (directory.isOpen() && total < maxListedBytes) {
        // Not readdir(), whose reader has its own idea of when to stop.
        const long length = syscall(SYS_getdents64, directory.get(), entries.data(), entries.size());
        if (length <= 0) {
            break;
        }
        total += static_cast<std::size_t>(length);
    }
    return total;
}

}  // namespace corvane
