#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/HelperConnection.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// A service manager that knows one service, the helper, and the transport to it, all in this process: it
/// starts the helper when somebody calls it, and everything that can happen to a helper can be made to
/// happen. Not thread-safe: the main loop and the helper's queue run on one thread, as on virtual time.
class SimulatedHelperHost final : public HelperConnector {
public:
    /// Starts a helper and returns what it serves.
    using Launch = std::function<std::shared_ptr<FanHelperProtocol>()>;
    using StatusFilter = std::function<StatusRecord(StatusRecord)>;

    /// Every call through a connection ends within this.
    static constexpr Duration callTimeout = std::chrono::seconds(5);

    /// `mainLoop` outlives the host, which outlives its connections.
    SimulatedHelperHost(SerialQueue& mainLoop, Launch launch);
    ~SimulatedHelperHost() override;

    [[nodiscard]] std::unique_ptr<HelperConnection> connect(HelperConnectionHandlers handlers) override;

    // What is done to the helper.

    /// False: there is no such service and calls invalidate their connections.
    void setInstalled(bool installed) { isInstalled_ = installed; }
    /// The helper's process ends: its calls are lost and connections are interrupted. `launch` must be able
    /// to start another.
    void kill();
    /// While it hangs, what is sent to the helper is lost.
    void setHung(bool hung) { isHung_ = hung; }
    /// Calls are answered with this error; empty for none.
    void failCallsWith(std::string description) { callError_ = std::move(description); }
    /// Status records reach the application as the filter makes them; null for as they are.
    void filterStatus(StatusFilter filter) { statusFilter_ = std::move(filter); }

    /// Connections that exist now.
    [[nodiscard]] std::size_t connectionCount() const { return connections_.size(); }
    /// Helpers started so far.
    [[nodiscard]] int launchCount() const { return launchCount_; }
    [[nodiscard]] bool isRunning() const { return service_ != nullptr; }

private:
    class Connection;

    /// The helper to hand a call to, started if need be; null when the call is lost.
    FanHelperProtocol* receiver();

    SerialQueue& mainLoop_;
    Launch launch_;
    StatusFilter statusFilter_;
    std::string callError_;
    std::shared_ptr<FanHelperProtocol> service_;
    std::vector<Connection*> connections_;
    bool isInstalled_ = true;
    bool isHung_ = false;
    int launchCount_ = 0;
};

}  // namespace corvane
