#pragma once

#include <functional>
#include <string>

#include <sdbus-c++/IConnection.h>

namespace corvane {

/// The message bus itself as a sender: nobody else can bear this name.
inline constexpr const char* busItself = "org.freedesktop.DBus";

/// Who owned a bus name and who does now: unique names, empty for nobody.
struct OwnerChange {
    std::string former;
    std::string current;
};

/// Runs `changed` each time the owner of a bus name changes while the answer lives. Believes nobody but the
/// bus. Waits for the bus, so it is called before the connection is pumped; throws sdbus::Error.
[[nodiscard]] sdbus::Slot watchBusName(sdbus::IConnection& connection, const std::string& name,
                                       std::function<void(const OwnerChange& change)> changed);

/// Who owns a bus name now: a unique name, empty for nobody. What a watch made before tells of later happened
/// after this. Waits for the bus, as above; throws sdbus::Error.
[[nodiscard]] std::string busNameOwner(sdbus::IConnection& connection, const std::string& name);

}  // namespace corvane
