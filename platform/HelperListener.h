#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/FanHelperProtocol.h"

namespace corvane {

/// Decides about connections to the helper.
class HelperListenerDelegate {
public:
    virtual ~HelperListenerDelegate() = default;

    /// The object to serve a new connection with; null refuses the connection. Called on the listener's
    /// thread.
    virtual std::shared_ptr<FanHelperProtocol> acceptConnection() = 0;
};

/// The helper's end of the transport: publishes `FanHelperProtocol` under its service name.
///
/// Created, resumed and destroyed on the main thread. Calls reach the served object on a thread of the
/// transport; replies may come from any thread. A malformed message is answered with an error and does not
/// reach the object. What a caller can make the listener hold is bounded: further calls are answered with an
/// error until earlier ones are done.
class HelperListener {
public:
    HelperListener() = default;
    HelperListener(const HelperListener&) = delete;
    HelperListener& operator=(const HelperListener&) = delete;
    virtual ~HelperListener() = default;

    /// Begins to accept connections. Returns what went wrong, or nothing. `delegate` outlives the listener.
    [[nodiscard]] virtual std::optional<std::string> resume(HelperListenerDelegate& delegate) = 0;
};

}  // namespace corvane
