#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/IProxy.h>

#include "platform/NotificationCenter.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/HelperBus.h"

namespace corvane {

/// One connection to the bus that notifications are posted on, made, used and destroyed on the bus thread.
class DBusNotificationLink : public std::enable_shared_from_this<DBusNotificationLink> {
public:
    /// Kept until its server has answered.
    using Post = std::shared_ptr<const UserNotification>;

    /// Tells, once or more, that the bus has gone away or the server has kept silent. May not destroy the
    /// link.
    using OnUseless = std::function<void(const std::weak_ptr<DBusNotificationLink>& link)>;

    /// Connects, and waits for the bus in doing so; throws when it cannot. `patience` is how long the server
    /// may keep silent.
    DBusNotificationLink(asio::io_context& context, const HelperBus& bus, std::chrono::nanoseconds patience,
                         OnUseless onUseless);

    /// Called once, before anything else, when a shared pointer owns the link.
    void start();

    /// Sends the notification as soon as the server has said what texts it takes. Forgets it when there is no
    /// server.
    void post(const Post& post);

private:
    void askCapabilities();
    void learnCapabilities(const std::vector<std::string>& capabilities);
    void notify(const Post& post);
    void awaitAnswer();
    void answered();

    std::chrono::nanoseconds patience_;
    OnUseless onUseless_;
    /// Unknown until the server that owns the name now has told.
    std::optional<bool> takesMarkup_;
    /// For that to become known.
    std::deque<Post> waiting_;
    int unanswered_ = 0;
    asio::steady_timer deadline_;
    // Destroyed from the last to the first: what uses the connection before it.
    std::unique_ptr<sdbus::IConnection> connection_;
    sdbus::Slot ownerWatch_;
    std::unique_ptr<sdbus::IProxy> server_;
    BusPump pump_;
};

}  // namespace corvane
