#include "platform/linux/BusNameWatch.h"

#include <utility>

#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>

namespace corvane {

sdbus::Slot watchBusName(sdbus::IConnection& connection, const std::string& name,
                         std::function<void(const OwnerChange& change)> changed) {
    return connection.addMatch(
        fmt::format("type='signal',sender='{0}',interface='{0}',member='NameOwnerChanged',arg0='{1}'",
                    busItself, name),
        [changed = std::move(changed)](sdbus::Message& message) {
            // Whoever addresses this connection directly gets past the rule's sender.
            if (message.getSender() != busItself) {
                return;
            }
            std::string changedName;
            OwnerChange change;
            message >> changedName >> change.former >> change.current;
            changed(change);
        });
}

std::string busNameOwner(sdbus::IConnection& connection, const std::string& name) {
    const auto bus = sdbus::createProxy(connection, busItself, "/org/freedesktop/DBus");
    std::string owner;
    try {
        bus->callMethod("GetNameOwner").onInterface(busItself).withArguments(name).storeResultsTo(owner);
    } catch (const sdbus::Error& error) {
        if (error.getName() != "org.freedesktop.DBus.Error.NameHasNoOwner") {
            throw;
        }
    }
    return owner;
}

}  // namespace corvane
