#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include <asio/io_context.hpp>
#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/IProxy.h>

#include "platform/linux/BusNameWatch.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/desktop/HelperRequest.h"

namespace corvane {

/// What a link tells. On the bus thread.
struct HelperLinkEvents {
    std::function<void(CallId call, HelperAnswer answer)> answered;
    /// `description` is one line for people.
    std::function<void(CallId call, const std::string& description)> failed;
    /// The helper has left the bus or was replaced; nothing more will be heard of the calls up to `lastCall`.
    std::function<void(CallId lastCall)> ownerLeft;
    /// The bus cannot be reached or has gone away, or it knows no helper and can start none. May be told
    /// several times.
    std::function<void()> unavailable;
};

/// The part of a connection to the helper that lives on the bus thread: made, used and destroyed there.
class HelperLink {
public:
    /// `context` is the bus thread's.
    HelperLink(asio::io_context& context, HelperBus bus, HelperLinkEvents events);

    /// Connects to the bus. Called once, before anything else. Blocks while the bus does not answer.
    void open();

    /// Sends a request, which starts the helper when it does not run. At most one of `answered` and `failed`
    /// tells of the call; `ownerLeft` and `unavailable` end it as well. There may be none of these: when the
    /// helper keeps silent, when the bus gives up waiting for it, and when the message cannot be sent. So the
    /// caller limits the call's time, and forgets it then.
    void send(CallId call, const HelperRequest& request);

    /// The call is over; a reply that comes yet is not heard.
    void forget(CallId call);

private:
    void ownerChanged(const OwnerChange& change);
    void begin(CallId call, const HelperRequest& request);
    void ended(CallId call, const HelperRequest& request, sdbus::Message& reply, const sdbus::Error* error);
    void endedBadly(CallId call, const std::string& sender, const sdbus::Error& error);

    asio::io_context& context_;
    HelperBus bus_;
    HelperLinkEvents events_;
    CallId lastSent_ = 0;
    // Destroyed from the last to the first: what uses the connection before it.
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IProxy> proxy_;
    std::map<CallId, sdbus::PendingAsyncCall> underWay_;
    sdbus::Slot ownerWatch_;
    std::unique_ptr<BusPump> pump_;
};

}  // namespace corvane
