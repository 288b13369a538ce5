#pragma once

#include <memory>

#include "platform/HotKeyService.h"
#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/EnvironmentLookup.h"

namespace corvane {

/// The hot keys of the user's session: on Wayland those of the desktop's portal, even where there is an X
/// server for old applications, since that one hears of keys only while such an application is in front;
/// elsewhere the X server's. Main loop; all but the lookup outlive the service.
[[nodiscard]] std::unique_ptr<HotKeyService> makeHotKeys(const EnvironmentLookup& environment,
                                                         BusThread& sessionBus, SerialQueue& mainLoop,
                                                         Log& log);

/// Whether the session is one of Wayland.
[[nodiscard]] bool isWaylandSession(const EnvironmentLookup& environment);

}  // namespace corvane
