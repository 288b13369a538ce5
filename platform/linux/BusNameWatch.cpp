#include "platform/linux/BusNameWatch.h"

#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <sdbus-c++/Message.h>

namespace corvane {

namespace {

constexpr std::string_view busItself = "org.freedesktop.DBus";

}  // namespace

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

}  // namespace corvane
