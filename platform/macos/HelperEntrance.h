#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "platform/FanHelperProtocol.h"
#include "platform/RequestLimiter.h"

namespace corvane {

/// The way of one connection from the transport's threads to the served object, until it is closed. Any
/// thread.
class HelperEntrance {
public:
    using Call = std::function<void(FanHelperProtocol& served, RequestLimiter::Place place)>;

    /// `requests` has the places of the connection's calls, which count for `caller`; `place` is its own.
    /// `hangUp` ends the connection.
    HelperEntrance(std::shared_ptr<FanHelperProtocol> served, std::shared_ptr<RequestLimiter> requests,
                   std::string caller, RequestLimiter::Place place, std::function<void()> hangUp);

    /// Lets no call in any more, ends the connection and returns once no call is inside.
    void close();

    /// Runs `call` with the served object and with the call's place, which lasts until its reply has gone.
    /// Does not when there is no room for another of the caller's, and when this is closed.
    void enter(const Call& call);

private:
    std::mutex mutex_;
    std::shared_ptr<FanHelperProtocol> served_;
    std::shared_ptr<RequestLimiter> requests_;
    std::string caller_;
    RequestLimiter::Place place_;
    std::function<void()> hangUp_;
};

}  // namespace corvane
