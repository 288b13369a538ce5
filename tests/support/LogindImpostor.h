#pragma once

#include <memory>
#include <string>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"
#include "platform/linux/LogindLock.h"

namespace corvane {

/// Someone on a bus who passes for the login manager without owning its name. Belongs to one thread.
class LogindImpostor {
public:
    explicit LogindImpostor(const std::string& bus)
        : connection_(HelperBus{bus}.connect()),
          bus_(sdbus::createProxy(*connection_, "org.freedesktop.DBus", "/org/freedesktop/DBus")),
          object_(sdbus::createObject(*connection_, Logind::objectPath)) {}

    /// Tells everybody on the bus, each directly, and returns when the bus has passed it on.
    void tellOfSuspend(bool isGoingDown) {
        for (const std::string& name : names()) {
            if (name.starts_with(':')) {
                auto signal = object_->createSignal(Logind::interface, "PrepareForSleep");
                signal.setDestination(name);
                signal << isGoingDown;
                object_->emitSignal(signal);
            }
        }
        // The bus handles what one connection sends in order.
        (void)names();
    }

private:
    [[nodiscard]] std::vector<std::string> names() {
        std::vector<std::string> names;
        bus_->callMethod("ListNames").onInterface("org.freedesktop.DBus").storeResultsTo(names);
        return names;
    }

    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IProxy> bus_;
    std::unique_ptr<sdbus::IObject> object_;
};

}  // namespace corvane
