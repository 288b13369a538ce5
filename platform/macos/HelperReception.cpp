#include "platform/macos/HelperReception.h"

#include <utility>

namespace corvane {

std::shared_ptr<HelperEntrance> HelperReception::admit(const std::string& caller,
                                                       std::function<void()> hangUp) {
    const std::lock_guard lock(mutex_);
    RequestLimiter::Place place = delegate_ == nullptr ? nullptr : connections_->admit(caller);
    auto served = place ? delegate_->acceptConnection() : nullptr;
    if (!served) {
        return nullptr;
    }
    std::erase_if(entrances_, [](const auto& entrance) { return entrance.expired(); });
    auto entrance = std::make_shared<HelperEntrance>(std::move(served), requests_, caller, std::move(place),
                                                     std::move(hangUp));
    entrances_.push_back(entrance);
    return entrance;
}

void HelperReception::close() {
    const std::lock_guard lock(mutex_);
    delegate_ = nullptr;
    for (const auto& entrance : entrances_) {
        if (const auto open = entrance.lock()) {
            open->close();
        }
    }
}

}  // namespace corvane
