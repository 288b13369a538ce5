#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/HelperCalls.h"
#include "platform/HelperConnection.h"
#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/HelperLink.h"

namespace corvane {

/// A connection to the helper over D-Bus, which starts the helper when a call comes for it. Belongs to the
/// main loop; what is on the bus happens on the bus thread.
///
/// `interrupted` comes when an owner of the helper's name leaves or is replaced, once for each; the helper's
/// first start is none. `invalidated` comes once: when the bus cannot be reached or goes away, or when it
/// answers that it knows no helper or could not start one, a helper that ended at its start included. After
/// that calls have no effect. A reply with more arguments than agreed is of the wrong form.
class DBusHelperConnection final : public HelperConnection, private FanHelperProtocol {
public:
    /// `timeout` is what a call may take; time during which the machine sleeps or the main loop is busy does
    /// not count. The bus thread and the main loop outlive the connection.
    DBusHelperConnection(BusThread& busThread, SerialQueue& mainLoop, HelperBus bus, Duration timeout,
                         HelperConnectionHandlers handlers);
    ~DBusHelperConnection() override;

    [[nodiscard]] FanHelperProtocol& remoteObject() override { return *this; }

private:
    void pingWithReply(Reply reply) override;
    void getStatusWithReply(StatusReply reply) override;
    void setFanFloorWithPercentWithReply(double percent, Reply reply) override;
    void stopBoostWithReply(Reply reply) override;
    void setLidStayAwakeWithReply(bool on, Reply reply) override;

    void requestText(const char* member, std::variant<std::monostate, double, bool> argument, Reply reply);
    void request(HelperRequest request, HelperCalls::Deliver deliver);
    void giveUp(CallId id);
    void fail(const std::string& description);

    // What the link tells.
    void answered(CallId id, HelperAnswer answer);
    void callFailed(CallId id, const std::string& description);
    void ownerLeft(CallId lastCall);
    void unavailable();

    template <typename... Values>
    std::function<void(Values...)> onMainLoop(void (DBusHelperConnection::*member)(Values...));
    void onBusThread(std::function<void(HelperLink& link)> work);
    void close();

    BusThread& busThread_;
    SerialQueue& mainLoop_;
    HelperConnectionHandlers handlers_;
    HelperCalls calls_;
    /// Only posted work touches what it points to. Null once the connection is dead.
    std::shared_ptr<HelperLink> link_;
    Lifetime lifetime_;
};

}  // namespace corvane
