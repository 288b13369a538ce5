#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "platform/NotificationCenter.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// Keeps what is posted, for tests. Main loop, whose queue carries the replies.
class RecordingNotificationCenter final : public NotificationCenter {
public:
    /// `mainLoop` outlives the centre.
    explicit RecordingNotificationCenter(SerialQueue& mainLoop) : mainLoop_(mainLoop) {}

    [[nodiscard]] bool isAvailable() const override { return isAvailable_; }
    void presentInForeground() override { ++foregroundRequests_; }
    void getAuthorization(std::function<void(NotificationAuthorization)> reply) override {
        mainLoop_.async([reply = std::move(reply), authorization = authorization_] { reply(authorization); });
    }
    void requestAuthorization() override { ++authorizationRequests_; }
    void add(const UserNotification& notification) override { posted_.push_back(notification); }

    void setAvailable(bool available) { isAvailable_ = available; }
    void setAuthorization(NotificationAuthorization authorization) { authorization_ = authorization; }

    /// Oldest first.
    [[nodiscard]] const std::vector<UserNotification>& posted() const { return posted_; }
    [[nodiscard]] int authorizationRequests() const { return authorizationRequests_; }
    [[nodiscard]] int foregroundRequests() const { return foregroundRequests_; }

private:
    SerialQueue& mainLoop_;
    bool isAvailable_ = true;
    NotificationAuthorization authorization_ = NotificationAuthorization::authorized;
    std::vector<UserNotification> posted_;
    int authorizationRequests_ = 0;
    int foregroundRequests_ = 0;
};

}  // namespace corvane
