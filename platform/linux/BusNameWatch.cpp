#include "platform/linux/BusNameWatch.h"

#include <utility>

#include <fmt/format.h>
#include <sdbus-c++/Message.h>

namespace corvane {

sdbus::Slot watchBusName(sdbus::IConnection& connection, const std::string& name,
                         std::function<void(const std::string& newOwner)> changed) {
    return connection.addMatch(
        fmt::format("type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                    "member='NameOwnerChanged',arg0='{}'",
                    name),
        [changed = std::move(changed)](sdbus::Message& message) {
            std::string changedName;
            std::string oldOwner;
            std::string newOwner;
            message >> changedName >> oldOwner >> newOwner;
            changed(newOwner);
        });
}

}  // namespace corvane
