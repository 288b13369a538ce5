#include "platform/linux/desktop/DBusHelperConnector.h"

#include <utility>

#include "platform/linux/desktop/DBusHelperConnection.h"

namespace corvane {

DBusHelperConnector::DBusHelperConnector(BusThread& busThread, SerialQueue& mainLoop, HelperBus bus,
                                         Duration timeout)
    : busThread_(busThread), mainLoop_(mainLoop), bus_(std::move(bus)), timeout_(timeout) {}

std::unique_ptr<HelperConnection> DBusHelperConnector::connect(HelperConnectionHandlers handlers) {
    return std::make_unique<DBusHelperConnection>(busThread_, mainLoop_, bus_, timeout_, std::move(handlers));
}

}  // namespace corvane
