#include "platform/RequestLimiter.h"

namespace corvane {

RequestLimiter::Place RequestLimiter::admit(const std::string& caller) {
    const std::lock_guard lock(mutex_);
    if (waiting_ >= maxWaiting) {
        return nullptr;
    }
    std::size_t& ofCaller = waitingPerCaller_[caller];
    if (ofCaller >= maxWaitingPerCaller) {
        return nullptr;
    }
    ++ofCaller;
    ++waiting_;
    return {this, [limiter = shared_from_this(), caller](void*) { limiter->leave(caller); }};
}

void RequestLimiter::leave(const std::string& caller) {
    const std::lock_guard lock(mutex_);
    --waiting_;
    const auto entry = waitingPerCaller_.find(caller);
    if (--entry->second == 0) {
        waitingPerCaller_.erase(entry);
    }
}

}  // namespace corvane
