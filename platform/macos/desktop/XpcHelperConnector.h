#pragma once

#include <chrono>

#include "platform/HelperConnection.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// Connects to the helper's Mach service in the system's domain, where launchd starts the helper as a call
/// comes for it. Main loop.
class XpcHelperConnector final : public HelperConnector {
public:
    /// `timeout` is what a call may take. The main loop outlives the connector and its connections.
    explicit XpcHelperConnector(SerialQueue& mainLoop, Duration timeout = std::chrono::seconds(5))
        : mainLoop_(mainLoop), timeout_(timeout) {}

    [[nodiscard]] std::unique_ptr<HelperConnection> connect(HelperConnectionHandlers handlers) override;

private:
    SerialQueue& mainLoop_;
    Duration timeout_;
};

}  // namespace corvane
