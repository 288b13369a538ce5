#include "platform/macos/HelperEntrance.h"

#include <utility>

namespace corvane {

HelperEntrance::HelperEntrance(std::shared_ptr<FanHelperProtocol> served,
                               std::shared_ptr<RequestLimiter> requests, std::string caller,
                               RequestLimiter::Place place, std::function<void()> hangUp)
    : served_(std::move(served)),
      requests_(std::move(requests)),
      caller_(std::move(caller)),
      place_(std::move(place)),
      hangUp_(std::move(hangUp)) {}

void HelperEntrance::close() {
    const std::lock_guard lock(mutex_);
    served_.reset();
    hangUp_();
}

void HelperEntrance::enter(const Call& call) {
    const std::lock_guard lock(mutex_);
    RequestLimiter::Place place = served_ ? requests_->admit(caller_) : nullptr;
    if (place) {
        call(*served_, std::move(place));
    }
}

}  // namespace corvane
