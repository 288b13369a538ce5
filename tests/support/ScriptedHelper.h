#pragma once

#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "platform/FanHelperProtocol.h"
#include "tests/support/Notes.h"

namespace corvane {

/// A helper that notes what it is asked. It answers at once, or, once told to, keeps the replies to status
/// requests for the test to send.
class ScriptedHelper final : public FanHelperProtocol {
public:
    void pingWithReply(Reply reply) override {
        calls_.add("ping");
        reply(true, "pong");
    }
    void getStatusWithReply(StatusReply reply) override {
        if (keepsReplies_) {
            kept_.add(std::move(reply));
        } else {
            reply({});
        }
        calls_.add("status");
    }
    void setFanFloorWithPercentWithReply(double percent, Reply reply) override {
        calls_.add(fmt::format("floor {}", percent));
        reply(true, "floor");
    }
    void stopBoostWithReply(Reply reply) override {
        calls_.add("stop");
        reply(false, "stopped");
    }
    void setLidStayAwakeWithReply(bool on, Reply reply) override {
        calls_.add(fmt::format("lid {}", on));
        reply(true, "lid");
    }

    /// Before the first call.
    void keepReplies() { keepsReplies_ = true; }
    [[nodiscard]] const Notes<std::string>& calls() const { return calls_; }
    [[nodiscard]] const Notes<StatusReply>& kept() const { return kept_; }
    /// The kept replies are the test's from now on.
    [[nodiscard]] std::vector<StatusReply> takeKept() { return kept_.take(); }

private:
    bool keepsReplies_ = false;
    Notes<std::string> calls_;
    Notes<StatusReply> kept_;
};

}  // namespace corvane
