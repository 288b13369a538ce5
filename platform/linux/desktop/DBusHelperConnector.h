#pragma once

#include <chrono>

#include "platform/HelperConnection.h"
#include "platform/SerialQueue.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/desktop/BusThread.h"

namespace corvane {

/// Connects to the helper over D-Bus. Main loop.
class DBusHelperConnector final : public HelperConnector {
public:
    /// `timeout` is what a call may take. The bus thread and the main loop outlive the connector and its
    /// connections.
    DBusHelperConnector(BusThread& busThread, SerialQueue& mainLoop, HelperBus bus,
                        Duration timeout = std::chrono::seconds(5));

    [[nodiscard]] std::unique_ptr<HelperConnection> connect(HelperConnectionHandlers handlers) override;

private:
    BusThread& busThread_;
    SerialQueue& mainLoop_;
    HelperBus bus_;
    Duration timeout_;
};

}  // namespace corvane
