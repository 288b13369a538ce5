#include "platform/ExecutablePath.h"

#include <cstdint>
#include <string>
#include <system_error>

#include <mach-o/dyld.h>

namespace corvane {

std::filesystem::path executablePath() {
    std::uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size);
    std::string path(size, '\0');
    if (size == 0 || _NSGetExecutablePath(path.data(), &size) != 0) {
        return {};
    }
    // Without the zero at the end.
    path.resize(path.find('\0'));
    std::error_code error;
    return std::filesystem::canonical(path, error);
}

}  // namespace corvane
