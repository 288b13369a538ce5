#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/HelperListener.h"
#include "platform/RequestLimiter.h"
#include "platform/macos/HelperEntrance.h"

namespace corvane {

/// Lets connections in, until it is closed: bounds their number, as that of the calls that wait, in all and
/// for each caller. Any thread.
class HelperReception {
public:
    /// `delegate` outlives the time that this is open.
    explicit HelperReception(HelperListenerDelegate& delegate) : delegate_(&delegate) {}

    /// Null refuses the connection of `caller`, which `hangUp` ends.
    std::shared_ptr<HelperEntrance> admit(const std::string& caller, std::function<void()> hangUp);

    /// Closes every entrance, too.
    void close();

private:
    std::mutex mutex_;
    HelperListenerDelegate* delegate_;
    std::shared_ptr<RequestLimiter> connections_ = std::make_shared<RequestLimiter>();
    std::shared_ptr<RequestLimiter> requests_ = std::make_shared<RequestLimiter>();
    std::vector<std::weak_ptr<HelperEntrance>> entrances_;
};

}  // namespace corvane
