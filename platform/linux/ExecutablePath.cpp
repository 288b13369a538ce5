#include "platform/ExecutablePath.h"

#include <system_error>

namespace corvane {

std::filesystem::path executablePath() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

}  // namespace corvane
