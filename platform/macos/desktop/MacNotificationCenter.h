#pragma once

#include <functional>
#include <memory>

#include "platform/MainLoopReplies.h"
#include "platform/NotificationCenter.h"

namespace corvane {

/// The system's notification centre, which there is for applications with a bundle alone. Main loop.
class MacNotificationCenter final : public NotificationCenter {
public:
    /// `mainLoop` outlives the centre.
    explicit MacNotificationCenter(SerialQueue& mainLoop);
    ~MacNotificationCenter() override;

    [[nodiscard]] bool isAvailable() const override;
    void presentInForeground() override;
    void getAuthorization(std::function<void(NotificationAuthorization)> reply) override;
    void requestAuthorization() override;
    void add(const UserNotification& notification) override;

private:
    struct Delegate;

    MainLoopReplies<NotificationAuthorization> replies_;
    /// None while notifications do not appear in the foreground. The centre itself does not keep it.
    std::unique_ptr<Delegate> delegate_;
};

}  // namespace corvane
