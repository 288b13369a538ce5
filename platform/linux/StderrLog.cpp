#include "platform/linux/StderrLog.h"

#include <sys/uio.h>
#include <unistd.h>

namespace corvane {

void StderrLog::write(std::string_view line) noexcept {
    char end = '\n';
    // One call, so that lines of several threads do not mix.
    iovec parts[] = {{const_cast<char*>(line.data()), line.size()}, {&end, 1}};
    [[maybe_unused]] const ssize_t written = writev(STDERR_FILENO, parts, 2);
}

}  // namespace corvane
