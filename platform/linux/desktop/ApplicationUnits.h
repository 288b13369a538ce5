#pragma once

#include <asio/io_context.hpp>

#include "platform/linux/desktop/LastingLink.h"
#include "platform/linux/desktop/UserBus.h"
#include "platform/linux/desktop/UserManagerLink.h"

namespace corvane {

/// The applications that the user's service manager runs, also when its bus goes away and comes back.
/// Belongs to the thread that runs `context`.
class ApplicationUnits {
public:
    /// `publish` is that of `UserManagerLink`. Not before `start`.
    ApplicationUnits(asio::io_context& context, const UserBus& bus, UserManagerPatience patience,
                     const UserManagerLink::Publish& publish);

    /// Connects, and waits for the bus in doing so; tries again later when there is none. Called once.
    void start() { link_.start(); }

private:
    LastingLink<UserManagerLink> link_;
};

}  // namespace corvane
