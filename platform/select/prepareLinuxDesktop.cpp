#include <cstdlib>

#include "platform/linux/gui/DesktopDisplay.h"
#include "platform/posix/HeldSignals.h"
#include "platform/select/prepareDesktop.h"

namespace corvane {

std::variant<QtPlatform, std::string> prepareDesktop() {
    const auto display = DesktopDisplay::find([](const char* name) { return std::getenv(name); });
    if (const auto* problem = std::get_if<std::string>(&display)) {
        return *problem;
    }
    blockTerminationSignals();
    return QtPlatform{std::get<DesktopDisplay>(display).qtPlatform};
}

}  // namespace corvane
