#include "platform/simulated/SimulatedHelperHost.h"

#include <utility>

#include "platform/Lifetime.h"

namespace corvane {

/// Calls travel through the main loop both ways, so nothing happens inside a call.
class SimulatedHelperHost::Connection final : public HelperConnection, public FanHelperProtocol {
public:
    Connection(SimulatedHelperHost& host, HelperConnectionHandlers handlers)
        : host_(host), handlers_(std::move(handlers)) {
        host_.connections_.push_back(this);
    }
    ~Connection() override { std::erase(host_.connections_, this); }

    FanHelperProtocol& remoteObject() override { return *this; }

    void pingWithReply(Reply reply) override {
        send(std::move(reply),
             [](FanHelperProtocol& helper, Reply answer) { helper.pingWithReply(std::move(answer)); });
    }
    void getStatusWithReply(StatusReply reply) override {
        StatusReply filtered = [this, reply = std::move(reply)](StatusRecord status) {
            reply(host_.statusFilter_ ? host_.statusFilter_(std::move(status)) : std::move(status));
        };
        send(std::move(filtered), [](FanHelperProtocol& helper, StatusReply answer) {
            helper.getStatusWithReply(std::move(answer));
        });
    }
    void setFanFloorWithPercentWithReply(double percent, Reply reply) override {
        send(std::move(reply), [percent](FanHelperProtocol& helper, Reply answer) {
            helper.setFanFloorWithPercentWithReply(percent, std::move(answer));
        });
    }
    void stopBoostWithReply(Reply reply) override {
        send(std::move(reply),
             [](FanHelperProtocol& helper, Reply answer) { helper.stopBoostWithReply(std::move(answer)); });
    }
    void setLidStayAwakeWithReply(bool on, Reply reply) override {
        send(std::move(reply), [on](FanHelperProtocol& helper, Reply answer) {
            helper.setLidStayAwakeWithReply(on, std::move(answer));
        });
    }

    /// The helper has gone; calls under way are lost.
    void interrupt() {
        timeouts_.clear();
        onMainLoop([interrupted = handlers_.interrupted] { interrupted(); });
    }

private:
    using CallNumber = std::uint64_t;

    template <typename... Values, typename Forward>
    void send(std::function<void(Values...)> reply, Forward forward) {
        const CallNumber call = ++lastCall_;
        timeouts_[call] = host_.mainLoop_.after(callTimeout, [this, call] { fail(call, "timed out"); });
        onMainLoop([this, call, reply = std::move(reply), forward = std::move(forward)]() mutable {
            deliver(call, std::move(reply), forward);
        });
    }

    template <typename... Values, typename Forward>
    void deliver(CallNumber call, std::function<void(Values...)> reply, const Forward& forward) {
        if (isDead_) {
            return;
        }
        if (!host_.isInstalled_) {
            invalidate();
            return;
        }
        if (!host_.callError_.empty()) {
            fail(call, host_.callError_);
            return;
        }
        FanHelperProtocol* helper = host_.receiver();
        if (helper == nullptr) {
            return;
        }
        auto finish = lifetime_.bound([this, call, reply = std::move(reply)](const Values&... values) {
            if (timeouts_.erase(call) == 1) {
                reply(values...);
            }
        });
        forward(*helper, [&mainLoop = host_.mainLoop_, finish = std::move(finish)](Values... values) {
            mainLoop.async([finish, ... values = std::move(values)]() mutable { finish(values...); });
        });
    }

    void fail(CallNumber call, const std::string& description) {
        const auto timeout = timeouts_.extract(call);
        if (!timeout.empty()) {
            const auto failed =
                handlers_.failed;  // which may destroy the connection, and with it the original
            failed(description);
        }
    }

    void invalidate() {
        isDead_ = true;
        timeouts_.clear();
        const auto invalidated = handlers_.invalidated;
        invalidated();
    }

    void onMainLoop(std::function<void()> work) { host_.mainLoop_.async(lifetime_.bound(std::move(work))); }

    SimulatedHelperHost& host_;
    HelperConnectionHandlers handlers_;
    /// By call under way. A call that is not among them has ended.
    std::map<CallNumber, std::unique_ptr<Timer>> timeouts_;
    CallNumber lastCall_ = 0;
    bool isDead_ = false;
    Lifetime lifetime_;
};

SimulatedHelperHost::SimulatedHelperHost(SerialQueue& mainLoop, Launch launch)
    : mainLoop_(mainLoop), launch_(std::move(launch)) {}

SimulatedHelperHost::~SimulatedHelperHost() = default;

std::unique_ptr<HelperConnection> SimulatedHelperHost::connect(HelperConnectionHandlers handlers) {
    return std::make_unique<Connection>(*this, std::move(handlers));
}

void SimulatedHelperHost::kill() {
    if (!service_) {
        return;
    }
    service_.reset();
    for (Connection* connection : connections_) {
        connection->interrupt();
    }
}

FanHelperProtocol* SimulatedHelperHost::receiver() {
    if (isHung_) {
        return nullptr;
    }
    if (!service_) {
        service_ = launch_();
        ++launchCount_;
    }
    return service_.get();
}

}  // namespace corvane
