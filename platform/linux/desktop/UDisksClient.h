#pragma once

#include <asio/io_context.hpp>

#include "platform/linux/desktop/LastingLink.h"
#include "platform/linux/desktop/UDisksLink.h"

namespace corvane {

/// What UDisks tells, also when the system bus goes away and comes back. Belongs to the thread that runs
/// `context`.
class UDisksClient {
public:
    using Volumes = UDisksLink::Volumes;

    /// `publish` is that of `UDisksLink`, and also runs with none when there is no bus. Not before `start`.
    UDisksClient(asio::io_context& context, UDisksPatience patience, const UDisksLink::Publish& publish);

    /// Connects, and waits for the bus in doing so; tries again later when there is none. Called once.
    void start() { link_.start(); }

private:
    LastingLink<UDisksLink> link_;
};

}  // namespace corvane
