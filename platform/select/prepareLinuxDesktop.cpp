#include <cstdlib>

#include "platform/linux/gui/DesktopDisplay.h"
#include "platform/posix/HeldSignals.h"
#include "platform/select/prepareDesktop.h"

namespace corvane {

std::variant<QtPlatform, std::string> prepareDesktop() {
    const auto found = DesktopDisplay::find([](const char* name) { return std::getenv(name); });
    if (const auto* problem = std::get_if<std::string>(&found)) {
        return *problem;
    }
    blockTerminationSignals();
    const auto& display = std::get<DesktopDisplay>(found);
    return QtPlatform{display.qtPlatform, display.connection};
}

}  // namespace corvane
