#pragma once

#include <functional>
#include <string>

namespace corvane {

/// A notification for the user, with the system's default sound, to be delivered at once.
struct UserNotification {
    /// Two notifications with different identifiers never replace each other.
    std::string identifier;
    /// UTF-8, not marked up.
    std::string title;
    std::string body;
};

/// What the user has decided about this application's notifications.
enum class NotificationAuthorization { notDetermined, denied, authorized, provisional };

/// The system's notification service. Belongs to the main loop and never blocks it.
class NotificationCenter {
public:
    NotificationCenter() = default;
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;
    virtual ~NotificationCenter() = default;

    /// False where the process has no identity to post under; then nothing else may be called.
    [[nodiscard]] virtual bool isAvailable() const = 0;

    /// From now on notifications appear, as banner and with sound, while the application is in front as well.
    virtual void presentInForeground() = 0;

    /// `reply` runs later on the main loop, or never.
    virtual void getAuthorization(std::function<void(NotificationAuthorization)> reply) = 0;

    /// Asks the user for alerts and sounds.
    virtual void requestAuthorization() = 0;

    /// Posts. What cannot be delivered is dropped.
    virtual void add(const UserNotification& notification) = 0;
};

}  // namespace corvane
