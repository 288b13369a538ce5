#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/HelperCalls.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// What an XPC connection tells, on the main loop, and never once the link is gone.
struct XpcHelperLinkEvents {
    std::function<void(CallId call, HelperAnswer answer)> answered;
    std::function<void(CallId call, const std::string& description)> failed;
    /// The helper has gone, and with it the answers to all calls up to `lastCall`.
    std::function<void(CallId lastCall)> interrupted;
    /// Nothing can be sent any more. May come more than once.
    std::function<void()> invalidated;
};

/// The messages to the helper's Mach service. Main loop.
class XpcHelperLink {
public:
    /// `mainLoop` outlives the link.
    XpcHelperLink(SerialQueue& mainLoop, XpcHelperLinkEvents events);
    XpcHelperLink(const XpcHelperLink&) = delete;
    XpcHelperLink& operator=(const XpcHelperLink&) = delete;
    /// Invalidates the connection.
    ~XpcHelperLink();

    void ping(CallId call);
    void getStatus(CallId call);
    void setFanFloor(CallId call, double percent);
    void stopBoost(CallId call);
    void setLidStayAwake(CallId call, bool on);

private:
    class Connection;

    std::unique_ptr<Connection> connection_;
};

}  // namespace corvane
