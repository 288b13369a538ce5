#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/HelperCalls.h"
#include "platform/HelperConnection.h"
#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"
#include "platform/macos/desktop/XpcHelperLink.h"

namespace corvane {

/// A connection to the helper over XPC, which has launchd start the helper when a call comes for it. Main
/// loop.
///
/// `interrupted` comes for each helper that goes, `invalidated` once, when launchd knows no such service.
/// After that calls have no effect.
class XpcHelperConnection final : public HelperConnection, private FanHelperProtocol {
public:
    /// `timeout` is what a call may take; time during which the machine sleeps or the main loop is busy does
    /// not count. The main loop outlives the connection.
    XpcHelperConnection(SerialQueue& mainLoop, Duration timeout, HelperConnectionHandlers handlers);

    [[nodiscard]] FanHelperProtocol& remoteObject() override { return *this; }

private:
    void pingWithReply(Reply reply) override;
    void getStatusWithReply(StatusReply reply) override;
    void setFanFloorWithPercentWithReply(double percent, Reply reply) override;
    void stopBoostWithReply(Reply reply) override;
    void setLidStayAwakeWithReply(bool on, Reply reply) override;

    using Send = std::function<void(XpcHelperLink& link, CallId call)>;
    void request(const Send& send, HelperCalls::Deliver deliver);
    void fail(const std::string& description);

    // What the link tells.
    void callFailed(CallId call, const std::string& description);
    void ownerLeft(CallId lastCall);
    void unavailable();

    SerialQueue& mainLoop_;
    HelperConnectionHandlers handlers_;
    HelperCalls calls_;
    Lifetime lifetime_;
    /// Null once the connection is dead.
    std::unique_ptr<XpcHelperLink> link_;
};

}  // namespace corvane
