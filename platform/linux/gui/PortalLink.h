#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <asio/io_context.hpp>
#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/IProxy.h>

#include "platform/linux/BusPump.h"
#include "platform/linux/HelperBus.h"

namespace corvane {

/// Follows whether the user prefers dark applications, as org.freedesktop.portal.Settings tells on the
/// session bus. Belongs to the thread that runs `context`.
class PortalLink {
public:
    /// `publish` runs with each change of what is known, which is none at first, without a portal or a
    /// preference, and after the portal has gone.
    PortalLink(asio::io_context& context, HelperBus bus, std::function<void(std::optional<bool>)> publish);
    PortalLink(const PortalLink&) = delete;
    PortalLink& operator=(const PortalLink&) = delete;
    ~PortalLink() = default;

    /// Connects, which waits for the bus, and asks, which starts a portal that waits to be asked. Once the
    /// bus has gone away, nothing is known for good. Called once.
    void start();

private:
    void watch();
    void ask();
    void answered(const sdbus::Error* error, const sdbus::Variant& value);
    void know(std::optional<bool> prefersDark);

    asio::io_context& context_;
    HelperBus bus_;
    std::function<void(std::optional<bool>)> publish_;
    std::optional<bool> prefersDark_;
    bool isAsking_ = false;
    /// Something changed since it was asked for.
    bool isOutdated_ = false;
    // Destroyed from the last to the first: what uses the connection before it.
    std::unique_ptr<sdbus::IConnection> connection_;
    std::vector<sdbus::Slot> watches_;
    std::unique_ptr<sdbus::IProxy> portal_;
    std::optional<BusPump> pump_;
};

}  // namespace corvane
