#pragma once

#include <memory>

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>

#include "platform/Lifetime.h"
#include "platform/linux/desktop/UserBus.h"
#include "platform/linux/desktop/UserManagerLink.h"

namespace corvane {

/// The applications that the user's service manager runs, also when its bus goes away and comes back.
/// Belongs to the thread that runs `context`.
class ApplicationUnits {
public:
    /// `publish` is that of `UserManagerLink`. Not before `start`.
    ApplicationUnits(asio::io_context& context, UserBus bus, UserManagerPatience patience,
                     UserManagerLink::Publish publish);

    /// Connects, and waits for the bus in doing so; tries again later when there is none. Called once
    /// from outside.
    void start();

private:
    void startLater();

    asio::io_context& context_;
    UserBus bus_;
    UserManagerPatience patience_;
    UserManagerLink::Publish publish_;
    Lifetime lifetime_;
    asio::steady_timer retry_;
    std::unique_ptr<UserManagerLink> link_;
};

}  // namespace corvane
