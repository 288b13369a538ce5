#pragma once

#include <string>

#include <sdbus-c++/IProxy.h>
#include <sdbus-c++/Types.h>

namespace corvane {

/// The login manager's names, and how a lock is taken from it.
namespace Logind {
inline constexpr const char* busName = "org.freedesktop.login1";
inline constexpr const char* objectPath = "/org/freedesktop/login1";
inline constexpr const char* interface = "org.freedesktop.login1.Manager";

/// Takes an inhibitor lock, held until the descriptor is closed. `what`: "sleep", "handle-lid-switch", joined
/// by colons; `mode`: "block" or "delay". Throws sdbus::Error, also when there is no answer within 1 s: the
/// fan control loop may be waiting for it, and the service manager's watchdog for the loop.
sdbus::UnixFd takeLock(sdbus::IProxy& manager, const std::string& what, const std::string& why,
                       const std::string& mode);
}  // namespace Logind

}  // namespace corvane
