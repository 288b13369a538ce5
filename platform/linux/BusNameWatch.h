#pragma once

#include <functional>
#include <string>

#include <sdbus-c++/IConnection.h>

namespace corvane {

/// Who owned a bus name and who does now: unique names, empty for nobody.
struct OwnerChange {
    std::string former;
    std::string current;
};

/// Runs `changed` each time the owner of a bus name changes while the answer lives. Believes nobody but the
/// bus. Waits for the bus, so it is called before the connection is pumped; throws sdbus::Error.
[[nodiscard]] sdbus::Slot watchBusName(sdbus::IConnection& connection, const std::string& name,
                                       std::function<void(const OwnerChange& change)> changed);

}  // namespace corvane
