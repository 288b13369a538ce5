#pragma once

#include <memory>
#include <string>

#include <sdbus-c++/IConnection.h>

#include "platform/FanHelperProtocol.h"

namespace corvane {

/// The bus that carries the helper: "system", "session", or a D-Bus address.
struct HelperBus {
    std::string name = "system";

    [[nodiscard]] bool isSystem() const { return name == "system"; }

    /// Connects; throws sdbus::Error.
    [[nodiscard]] std::unique_ptr<sdbus::IConnection> connect() const {
        if (isSystem()) {
            return sdbus::createSystemBusConnection();
        }
        if (name == "session") {
            return sdbus::createSessionBusConnection();
        }
        return sdbus::createSessionBusConnectionWithAddress(name);
    }
};

/// Where the helper's service is found on its bus.
namespace HelperAddress {
inline constexpr const char* busName = FanHelperProtocol::serviceName.data();
inline constexpr const char* objectPath = "/de/tavrin/corvane/smchelper";
inline constexpr const char* interface = "de.tavrin.corvane.FanHelperProtocol";
}  // namespace HelperAddress

}  // namespace corvane
