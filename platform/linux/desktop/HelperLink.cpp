#include "platform/linux/desktop/HelperLink.h"

#include <chrono>
#include <string_view>
#include <utility>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/OneLine.h"

namespace corvane {

namespace {

constexpr std::string_view noReply = "org.freedesktop.DBus.Error.NoReply";

/// How long the bus may take to agree to tell of the helper's coming and going.
constexpr std::chrono::seconds busPatience(5);

/// Calls end by the connection's own measure, or not at all.
constexpr std::uint64_t unlimited = UINT64_MAX;

/// Whether the bus says with the error `name` that it knows no helper or cannot start it. A program that ends
/// as soon as it is started counts: what would become of a further attempt is for a new connection to see.
bool meansUnavailable(std::string_view name) {
    return name == "org.freedesktop.DBus.Error.ServiceUnknown" ||
           name == "org.freedesktop.DBus.Error.NameHasNoOwner" ||
           name.starts_with("org.freedesktop.DBus.Error.Spawn.") ||
           name.starts_with("org.freedesktop.systemd1.");
}

bool hasMore(const sdbus::Message& message) {
    std::string type;
    std::string contents;
    message.peekType(type, contents);
    return type.front() != '\0';
}

void append(sdbus::MethodCall& message, const HelperRequest& request) {
    if (const auto* percent = std::get_if<double>(&request.argument)) {
        message << *percent;
    } else if (const auto* on = std::get_if<bool>(&request.argument)) {
        message << *on;
    }
}

}  // namespace

HelperLink::HelperLink(asio::io_context& context, HelperBus bus, HelperLinkEvents events)
    : context_(context), bus_(std::move(bus)), events_(std::move(events)) {}

void HelperLink::open() {
    try {
        connection_ = bus_.connect();
        connection_->setMethodCallTimeout(busPatience);
        ownerWatch_ = watchBusName(*connection_, HelperAddress::busName,
                                   [this](const OwnerChange& change) { ownerChanged(change); });
        proxy_ = sdbus::createProxy(*connection_, HelperAddress::busName, HelperAddress::objectPath);
        pump_ = std::make_unique<BusPump>(context_, *connection_,
                                          [this](const std::string& /*reason*/) { events_.unavailable(); });
    } catch (const sdbus::Error&) {
        events_.unavailable();
        return;
    }
    pump_->process();
}

void HelperLink::ownerChanged(const OwnerChange& change) {
    if (change.former.empty()) {
        return;
    }
    for (auto& [call, pending] : std::exchange(underWay_, {})) {
        pending.cancel();
    }
    events_.ownerLeft(lastSent_);
}

void HelperLink::send(CallId call, const HelperRequest& request) {
    if (!pump_) {
        return;
    }
    if (pump_->isCongested()) {
        // What waits to be sent stays within bounds.
        events_.failed(call, "The message bus does not take any messages.");
        return;
    }
    lastSent_ = call;
    pump_->send([&] { begin(call, request); });
}

void HelperLink::begin(CallId call, const HelperRequest& request) {
    auto message = proxy_->createMethodCall(HelperAddress::interface, request.member);
    append(message, request);
    underWay_[call] = proxy_->callMethod(
        message,
        [this, call, request](sdbus::MethodReply& reply, const sdbus::Error* error) {
            underWay_.erase(call);
            ended(call, request, reply, error);
        },
        unlimited);
}

void HelperLink::forget(CallId call) {
    if (auto pending = underWay_.extract(call)) {
        pending.mapped().cancel();
    }
}

void HelperLink::ended(CallId call, const HelperRequest& request, sdbus::Message& reply,
                       const sdbus::Error* error) {
    if (error != nullptr) {
        endedBadly(call, reply.getSender(), *error);
        return;
    }
    try {
        HelperAnswer answer = request.read(reply);
        // A member that answers more than was agreed is another member.
        if (!hasMore(reply)) {
            events_.answered(call, std::move(answer));
            return;
        }
    } catch (const sdbus::Error&) {
        // Told below.
    }
    events_.failed(call, "The helper's answer does not have the agreed form.");
}

void HelperLink::endedBadly(CallId call, const std::string& sender, const sdbus::Error& error) {
    const bool isFromBus = sender == busItself;
    if (isFromBus && meansUnavailable(error.getName())) {
        events_.unavailable();
    } else if (isFromBus && error.getName() == noReply) {
        // The helper left with the call under way. Some buses say so before they tell that it left, others
        // after that.
        return;
    } else {
        events_.failed(call, oneLine(error.getMessage().empty() ? error.getName() : error.getMessage()));
    }
}

}  // namespace corvane
