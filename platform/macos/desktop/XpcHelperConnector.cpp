#include "platform/macos/desktop/XpcHelperConnector.h"

#include <utility>

#include "platform/macos/desktop/XpcHelperConnection.h"

namespace corvane {

std::unique_ptr<HelperConnection> XpcHelperConnector::connect(HelperConnectionHandlers handlers) {
    return std::make_unique<XpcHelperConnection>(mainLoop_, timeout_, std::move(handlers));
}

}  // namespace corvane
