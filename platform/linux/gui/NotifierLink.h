#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/IProxy.h>

#include "platform/Lifetime.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/gui/NotifierContents.h"
#include "platform/linux/gui/NotifierObject.h"

namespace corvane {

/// How long the desktop is waited for. Tests have less time.
struct NotifierPatience {
    /// For the watcher's answers. Desktops are slow while they start.
    std::chrono::milliseconds answers = std::chrono::seconds(25);
    /// Before a bus that is not there, or a watcher that refused, is tried again.
    std::chrono::milliseconds retry = std::chrono::seconds(5);
};

/// Keeps the application's status item registered with whoever watches over such items on the bus,
/// org.kde.StatusNotifierWatcher, through every restart of it and of the bus. Belongs to the thread that runs
/// `context`.
class NotifierLink {
public:
    struct Events {
        /// The watcher has the item, and somebody shows what it has; or not. Told with each change, of which
        /// the first is to true.
        std::function<void(bool isShown)> shown;
        NotifierRequests requests;
    };

    /// Nothing is told before `start`. All events are there.
    NotifierLink(asio::io_context& context, HelperBus bus, NotifierPatience patience, Events events);
    NotifierLink(const NotifierLink&) = delete;
    NotifierLink& operator=(const NotifierLink&) = delete;
    ~NotifierLink() = default;

    /// Connects, which waits for the bus, and begins. Called once.
    void start(SharedContents contents);

    /// After `start`.
    void show(SharedContents contents);

private:
    void connect();
    void publish();
    void watch();
    void disconnect();
    void changeOwner(const std::string& owner);
    void registerItem();
    void askForHost();
    void takeHost(const sdbus::Error* error, const sdbus::Variant& hasHost);
    void tell(bool isShown);
    void later(void (NotifierLink::*work)());

    asio::io_context& context_;
    HelperBus bus_;
    NotifierPatience patience_;
    Events events_;
    SharedContents contents_;
    std::string name_;
    /// Of the watcher's name; empty for none.
    std::string owner_;
    bool isRegistered_ = false;
    bool isShown_ = false;
    bool isAskingForHost_ = false;
    asio::steady_timer retry_;
    Lifetime lifetime_;
    // Destroyed from the last to the first: what uses the connection before it.
    std::unique_ptr<sdbus::IConnection> connection_;
    std::vector<sdbus::Slot> watches_;
    std::unique_ptr<sdbus::IProxy> watcher_;
    std::optional<NotifierObject> object_;
    std::optional<BusPump> pump_;
};

}  // namespace corvane
