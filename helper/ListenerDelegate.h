#pragma once

#include <memory>
#include <utility>

#include "helper/FanHelperService.h"
#include "platform/HelperListener.h"

namespace corvane {

/// Serves every connection with the one service. Any local process may call; the bounds of the requests and
/// the watchdog are what protects the fans.
class ListenerDelegate final : public HelperListenerDelegate {
public:
    explicit ListenerDelegate(std::shared_ptr<FanHelperService> service) : service_(std::move(service)) {}

    std::shared_ptr<FanHelperProtocol> acceptConnection() override { return service_; }

private:
    std::shared_ptr<FanHelperService> service_;
};

}  // namespace corvane
