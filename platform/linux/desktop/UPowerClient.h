#pragma once

#include <asio/io_context.hpp>

#include "platform/linux/desktop/LastingLink.h"
#include "platform/linux/desktop/UPowerLink.h"

namespace corvane {

/// What UPower tells, also when the system bus goes away and comes back. Belongs to the thread that runs
/// `context`.
class UPowerClient {
public:
    using Batteries = UPowerLink::Batteries;

    /// `publish` is that of `UPowerLink`, and also runs with none when there is no bus. Not before `start`.
    UPowerClient(asio::io_context& context, UPowerPatience patience, const UPowerLink::Publish& publish);

    /// Connects, and waits for the bus in doing so; tries again later when there is none. Called once.
    void start() { link_.start(); }

private:
    LastingLink<UPowerLink> link_;
};

}  // namespace corvane
