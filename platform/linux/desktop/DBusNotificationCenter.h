#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>

#include "platform/NotificationCenter.h"
#include "platform/SerialQueue.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/desktop/BusThread.h"

namespace corvane {

/// Posts notifications to the desktop's server, org.freedesktop.Notifications, with its sound where it has
/// one.
///
/// There is nobody to ask for permission, so it counts as given. Every failure is silent: a notification is
/// dropped when there is no bus or no server, when the server fails or does not answer, and when
/// `maxUnderWay` others are under way. A bus that was lost is looked for again by the next notification.
class DBusNotificationCenter final : public NotificationCenter {
public:
    static constexpr std::size_t maxUnderWay = 16;

    /// The bus thread and the main loop outlive the centre; the latter carries the replies. `patience` is how
    /// long the server may take for an answer; then everything under way is dropped.
    DBusNotificationCenter(BusThread& busThread, SerialQueue& mainLoop, HelperBus bus = {"session"},
                           Duration patience = std::chrono::seconds(5));
    ~DBusNotificationCenter() override;

    [[nodiscard]] bool isAvailable() const override { return true; }
    /// The server decides; all that are known do.
    void presentInForeground() override {}
    void getAuthorization(std::function<void(NotificationAuthorization)> reply) override;
    void requestAuthorization() override {}
    void add(const UserNotification& notification) override;

private:
    class Poster;

    BusThread& busThread_;
    SerialQueue& mainLoop_;
    /// Shared with the bus thread.
    std::shared_ptr<Poster> poster_;
    /// Those that have not expired are under way. Only the bus thread lets go of them.
    std::deque<std::weak_ptr<const UserNotification>> underWay_;
};

}  // namespace corvane
