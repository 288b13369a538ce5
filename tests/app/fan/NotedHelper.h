#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "platform/FanHelperProtocol.h"

namespace corvane {

/// What was asked of a helper, and what is to be refused.
struct HelperRequests {
    /// "floor 25", "stop", "lid on" or "lid off".
    std::vector<std::string> texts;
    /// Floors are answered with a refusal and do not reach the helper.
    bool refusesFloors = false;
    /// The same for stops.
    bool refusesStops = false;
};

/// Stands before a helper and notes what is asked of it.
class NotedHelper final : public FanHelperProtocol {
public:
    /// `requests` outlives the object.
    NotedHelper(std::shared_ptr<FanHelperProtocol> helper, HelperRequests& requests)
        : helper_(std::move(helper)), requests_(requests) {}

    void pingWithReply(Reply reply) override { helper_->pingWithReply(std::move(reply)); }
    void getStatusWithReply(StatusReply reply) override { helper_->getStatusWithReply(std::move(reply)); }
    void setFanFloorWithPercentWithReply(double percent, Reply reply) override {
        requests_.texts.push_back(fmt::format("floor {}", percent));
        if (requests_.refusesFloors) {
            reply(false, "refused");
        } else {
            helper_->setFanFloorWithPercentWithReply(percent, std::move(reply));
        }
    }
    void stopBoostWithReply(Reply reply) override {
        requests_.texts.emplace_back("stop");
        if (requests_.refusesStops) {
            reply(false, "refused");
        } else {
            helper_->stopBoostWithReply(std::move(reply));
        }
    }
    void setLidStayAwakeWithReply(bool on, Reply reply) override {
        requests_.texts.emplace_back(on ? "lid on" : "lid off");
        helper_->setLidStayAwakeWithReply(on, std::move(reply));
    }

private:
    std::shared_ptr<FanHelperProtocol> helper_;
    HelperRequests& requests_;
};

}  // namespace corvane
