#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/HotKeyService.h"
#include "platform/Lifetime.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/HelperBus.h"

namespace corvane {

/// Some hot keys at the desktop's portal, org.freedesktop.portal.GlobalShortcuts, over a connection of their
/// own: the portal forgets them with it. Made, used and destroyed on the bus thread.
///
/// The portal may ask the user, for as long as that takes, and may give other keys than those that were
/// wanted. It is asked again when it comes up again, but not when it takes the keys back.
class PortalShortcuts {
public:
    /// A shortcut that comes again so soon is still held down, unless the portal says that it was let go of.
    /// Longer than keyboards wait before they repeat.
    static constexpr std::chrono::milliseconds repeatTime = std::chrono::seconds(1);

    /// May not destroy the shortcuts.
    struct Events {
        /// A shortcut was pressed, by the id of its key.
        std::function<void(std::uint32_t id)> pressed;
        /// The keys cannot be had, for a reason in English. Told once until they were had again.
        std::function<void(const std::string& reason)> failed;
    };

    /// Connects, and waits for the bus in doing so; throws sdbus::Error when it cannot.
    PortalShortcuts(asio::io_context& context, const HelperBus& bus, std::vector<HotKey> keys, Events events);

    /// Called once.
    void start();

private:
    using Dictionary = std::map<std::string, sdbus::Variant>;
    using OnResults = std::function<void(const Dictionary& results)>;

    void subscribe();
    void on(const char* interface, const char* member, std::function<void(sdbus::Message& signal)> handle);
    void changeOwner(const std::string& owner);
    void createSession();
    void bindShortcuts(const Dictionary& session);
    [[nodiscard]] Dictionary newRequest(OnResults onResults);
    void send(const sdbus::MethodCall& call);
    void takeReply(const std::string& token, sdbus::MethodReply& reply, const sdbus::Error* error);
    void takeResponse(sdbus::Message& signal);
    void takeClosing(const sdbus::Message& signal);
    void forget();
    void activate(sdbus::Message& signal);
    void deactivate(sdbus::Message& signal);
    [[nodiscard]] const HotKey* keyOf(sdbus::Message& signal) const;
    void fail(const std::string& reason);

    std::vector<HotKey> keys_;
    Events events_;
    bool hasFailed_ = false;
    /// The portal's unique name; empty without one.
    std::string owner_;
    /// The object path of the session that the keys belong to; empty without one.
    std::string session_;
    /// The token and the object path of the request under way; empty without one.
    std::string token_;
    std::string request_;
    OnResults onResults_;
    std::uint64_t requests_ = 0;
    /// The ids of the keys that are held down.
    std::set<std::uint32_t> held_;
    asio::steady_timer heldTimer_;
    Lifetime lifetime_;
    // Destroyed from the last to the first: what uses the connection before it.
    std::unique_ptr<sdbus::IConnection> connection_;
    std::vector<sdbus::Slot> subscriptions_;
    std::unique_ptr<sdbus::IProxy> portal_;
    BusPump pump_;
};

}  // namespace corvane
