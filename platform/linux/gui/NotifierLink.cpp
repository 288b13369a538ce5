#include "platform/linux/gui/NotifierLink.h"

#include <atomic>
#include <utility>

#include <asio/post.hpp>
#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>
#include <unistd.h>

#include "platform/linux/BusNameWatch.h"

namespace corvane {

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";

/// As the protocol wants it: the process and the number of the item in it.
std::string nextItemName() {
    static std::atomic<int> items = 0;
    return fmt::format("org.kde.StatusNotifierItem-{}-{}", getpid(), ++items);
}

}  // namespace

NotifierLink::NotifierLink(asio::io_context& context, HelperBus bus, NotifierPatience patience, Events events)
    : context_(context),
      bus_(std::move(bus)),
      patience_(patience),
      events_(std::move(events)),
      name_(nextItemName()),
      retry_(context) {}

void NotifierLink::start(SharedContents contents) {
    contents_ = std::move(contents);
    connect();
}

void NotifierLink::connect() {
    std::string owner;
    try {
        connection_ = bus_.connect();
        connection_->setMethodCallTimeout(patience_.answers);
        publish();
        watch();
        owner = busNameOwner(*connection_, watcherName);
    } catch (const sdbus::Error&) {
        disconnect();
        return;
    }
    pump_.emplace(context_, *connection_, [this](const std::string&) {
        // It is the pump that calls.
        asio::post(context_, lifetime_.bound([this] { disconnect(); }));
    });
    changeOwner(owner);
    // What has happened to the watcher since it was asked for lies in the connection.
    pump_->process();
}

void NotifierLink::publish() {
    object_.emplace(*connection_, contents_, events_.requests);
    connection_->requestName(name_);
}

void NotifierLink::watch() {
    watcher_ = sdbus::createProxy(*connection_, watcherName, watcherPath);
    watches_.push_back(watchBusName(*connection_, watcherName,
                                    [this](const OwnerChange& change) { changeOwner(change.current); }));
    for (const char* change : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        watches_.push_back(connection_->addMatch(
            fmt::format("type='signal',sender='{0}',interface='{0}',member='{1}'", watcherName, change),
            [this](sdbus::Message&) { askForHost(); }));
    }
}

void NotifierLink::disconnect() {
    pump_.reset();
    object_.reset();
    watcher_.reset();
    watches_.clear();
    connection_.reset();
    owner_.clear();
    isRegistered_ = false;
    isAskingForHost_ = false;
    tell(false);
    later(&NotifierLink::connect);
}

void NotifierLink::later(void (NotifierLink::*work)()) {
    retry_.expires_after(patience_.retry);
    retry_.async_wait(lifetime_.bound([this, work](const std::error_code& error) {
        if (!error) {
            (this->*work)();
        }
    }));
}

void NotifierLink::show(SharedContents contents) {
    contents_ = std::move(contents);
    if (pump_) {
        pump_->send([this] { object_->show(contents_); });
    }
}

void NotifierLink::changeOwner(const std::string& owner) {
    retry_.cancel();
    owner_ = owner;
    isRegistered_ = false;
    isAskingForHost_ = false;
    tell(false);
    if (!owner_.empty()) {
        registerItem();
    }
}

/// An answer of a watcher that has gone meanwhile says nothing of its successor.
void NotifierLink::registerItem() {
    // The bus may have gone just when it was time to try again.
    if (!pump_) {
        return;
    }
    pump_->send([this] {
        // The call refers to its name as long as it is put together.
        const std::string member = "RegisterStatusNotifierItem";
        watcher_->callMethodAsync(member)
            .onInterface(watcherName)
            .withArguments(name_)
            .uponReplyInvoke([this, owner = owner_](const sdbus::Error* error) {
                if (owner != owner_) {
                    return;
                }
                isRegistered_ = error == nullptr;
                if (isRegistered_) {
                    askForHost();
                } else {
                    later(&NotifierLink::registerItem);
                }
            });
    });
}

void NotifierLink::askForHost() {
    if (isAskingForHost_ || !isRegistered_) {
        return;
    }
    isAskingForHost_ = true;
    pump_->send([this] {
        const std::string member = "Get";
        watcher_->callMethodAsync(member)
            .onInterface("org.freedesktop.DBus.Properties")
            .withArguments(std::string(watcherName), std::string("IsStatusNotifierHostRegistered"))
            .uponReplyInvoke(
                [this, owner = owner_](const sdbus::Error* error, const sdbus::Variant& hasHost) {
                    if (owner == owner_) {
                        takeHost(error, hasHost);
                    }
                });
    });
}

/// A watcher that does not tell is taken to have a host: it is part of a desktop's panel, mostly.
void NotifierLink::takeHost(const sdbus::Error* error, const sdbus::Variant& hasHost) {
    isAskingForHost_ = false;
    tell(error != nullptr || !hasHost.containsValueOfType<bool>() || hasHost.get<bool>());
}

void NotifierLink::tell(bool isShown) {
    if (std::exchange(isShown_, isShown) != isShown) {
        events_.shown(isShown);
    }
}

}  // namespace corvane
