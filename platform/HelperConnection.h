#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/FanHelperProtocol.h"

namespace corvane {

/// What a connection to the helper reports. All of it runs on the main loop, never from inside a call into
/// the connection, and none of it after the connection was destroyed. Each may destroy the connection.
struct HelperConnectionHandlers {
    /// The helper has exited or was replaced. The connection stays: the next call starts the helper again.
    /// Calls under way get no reply and no failure.
    std::function<void()> interrupted;
    /// There is no such service and none can be started, or its bus is gone. The connection is dead.
    std::function<void()> invalidated;
    /// A call could not be carried out or was answered with an error; `description` is one line for people.
    /// The call gets no reply.
    std::function<void(const std::string& description)> failed;
};

/// The application's end of the helper transport. Destroying it invalidates it, silently.
///
/// Belongs to the main loop and never blocks it, whatever the helper does. Every call through the remote
/// object ends within 5 s, less than the helper's own patience with a silent application: by its reply, or by
/// one of the handlers. A reply of the wrong form is a failure.
class HelperConnection {
public:
    HelperConnection() = default;
    HelperConnection(const HelperConnection&) = delete;
    HelperConnection& operator=(const HelperConnection&) = delete;
    virtual ~HelperConnection() = default;

    /// The helper. Its replies follow the rules of the handlers. Lives as long as the connection.
    [[nodiscard]] virtual FanHelperProtocol& remoteObject() = 0;
};

/// Opens connections to the helper's service under `FanHelperProtocol::serviceName`. Main loop.
class HelperConnector {
public:
    HelperConnector() = default;
    HelperConnector(const HelperConnector&) = delete;
    HelperConnector& operator=(const HelperConnector&) = delete;
    virtual ~HelperConnector() = default;

    /// Never fails: a service that is not there shows up through the handlers of the first call at the
    /// latest. The connector outlives the connection.
    [[nodiscard]] virtual std::unique_ptr<HelperConnection> connect(HelperConnectionHandlers handlers) = 0;
};

}  // namespace corvane
