#include "platform/linux/desktop/makeHotKeys.h"

#include <string_view>

#include "platform/linux/desktop/PortalHotKeys.h"
#include "platform/linux/desktop/X11HotKeys.h"

namespace corvane {

namespace {

std::string_view valueOf(const EnvironmentLookup& environment, const char* name) {
    const char* const value = environment(name);
    return value == nullptr ? std::string_view() : value;
}

}  // namespace

bool isWaylandSession(const EnvironmentLookup& environment) {
    return valueOf(environment, "XDG_SESSION_TYPE") == "wayland" ||
           !valueOf(environment, "WAYLAND_DISPLAY").empty();
}

std::unique_ptr<HotKeyService> makeHotKeys(const EnvironmentLookup& environment, BusThread& sessionBus,
                                           SerialQueue& mainLoop, Log& log) {
    if (isWaylandSession(environment)) {
        return std::make_unique<PortalHotKeys>(sessionBus, mainLoop, log);
    }
    return std::make_unique<X11HotKeys>(mainLoop, log);
}

}  // namespace corvane
