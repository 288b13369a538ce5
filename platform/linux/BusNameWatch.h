#pragma once

#include <functional>
#include <string>

#include <sdbus-c++/IConnection.h>

namespace corvane {

/// Runs `changed` with the new owner of a bus name, empty for none, each time it changes while the answer
/// lives. Waits for the bus, so it is called before the connection is pumped; throws sdbus::Error.
[[nodiscard]] sdbus::Slot watchBusName(sdbus::IConnection& connection, const std::string& name,
                                       std::function<void(const std::string& newOwner)> changed);

}  // namespace corvane
