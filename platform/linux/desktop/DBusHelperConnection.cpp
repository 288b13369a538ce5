#include "platform/linux/desktop/DBusHelperConnection.h"

#include <optional>
#include <utility>

namespace corvane {

namespace {

/// A copy, so that what it does may destroy where it came from.
template <typename... Values>
void tell(std::function<void(Values...)> handler, const Values&... values) {
    if (handler) {
        handler(values...);
    }
}

}  // namespace

DBusHelperConnection::DBusHelperConnection(BusThread& busThread, SerialQueue& mainLoop, HelperBus bus,
                                           Duration timeout, HelperConnectionHandlers handlers)
    : busThread_(busThread),
      mainLoop_(mainLoop),
      handlers_(std::move(handlers)),
      calls_(mainLoop, timeout, [this](CallId id) { giveUp(id); }) {
    link_ = std::make_shared<HelperLink>(busThread_.context(), std::move(bus),
                                         HelperLinkEvents{onMainLoop(&DBusHelperConnection::answered),
                                                          onMainLoop(&DBusHelperConnection::callFailed),
                                                          onMainLoop(&DBusHelperConnection::ownerLeft),
                                                          onMainLoop(&DBusHelperConnection::unavailable)});
    onBusThread([](HelperLink& link) { link.open(); });
}

DBusHelperConnection::~DBusHelperConnection() {
    close();
}

void DBusHelperConnection::close() {
    // Destroyed where it lives, after what was posted to it before.
    busThread_.post([link = std::move(link_)]() mutable { link.reset(); });
}

/// A function for the bus thread, whose call reaches `member` on the main loop.
template <typename... Values>
std::function<void(Values...)> DBusHelperConnection::onMainLoop(
    void (DBusHelperConnection::*member)(Values...)) {
    auto call = lifetime_.bound([this, member](const Values&... values) { (this->*member)(values...); });
    return [&mainLoop = mainLoop_, call = std::move(call)](Values... values) {
        mainLoop.async([call, ... values = std::move(values)]() mutable { call(values...); });
    };
}

void DBusHelperConnection::onBusThread(std::function<void(HelperLink& link)> work) {
    if (link_) {
        busThread_.post([link = link_, work = std::move(work)] { work(*link); });
    }
}

void DBusHelperConnection::pingWithReply(Reply reply) {
    requestText("pingWithReply", {}, std::move(reply));
}

void DBusHelperConnection::getStatusWithReply(StatusReply reply) {
    request({"getStatusWithReply", {}, readStatusAnswer}, [reply = std::move(reply)](HelperAnswer answer) {
        reply(std::get<StatusRecord>(std::move(answer)));
    });
}

void DBusHelperConnection::setFanFloorWithPercentWithReply(double percent, Reply reply) {
    requestText("setFanFloorWithPercentWithReply", percent, std::move(reply));
}

void DBusHelperConnection::stopBoostWithReply(Reply reply) {
    requestText("stopBoostWithReply", {}, std::move(reply));
}

void DBusHelperConnection::setLidStayAwakeWithReply(bool on, Reply reply) {
    requestText("setLidStayAwakeWithReply", on, std::move(reply));
}

void DBusHelperConnection::requestText(const char* member,
                                       std::variant<std::monostate, double, bool> argument, Reply reply) {
    request({member, argument, readTextAnswer}, [reply = std::move(reply)](HelperAnswer answer) {
        auto& [ok, text] = std::get<TextAnswer>(answer);
        reply(ok, std::move(text));
    });
}

void DBusHelperConnection::request(HelperRequest request, HelperCalls::Deliver deliver) {
    if (!link_) {
        return;
    }
    const std::optional<CallId> id = calls_.begin(std::move(deliver));
    if (!id) {
        onMainLoop (&DBusHelperConnection::fail)("Too many requests wait for the helper's answers.");
        return;
    }
    onBusThread([id = *id, request](HelperLink& link) { link.send(id, request); });
}

void DBusHelperConnection::giveUp(CallId id) {
    onBusThread([id](HelperLink& link) { link.forget(id); });
    callFailed(id, "The helper did not answer in time.");
}

void DBusHelperConnection::answered(CallId id, HelperAnswer answer) {
    calls_.answer(id, std::move(answer));
}

void DBusHelperConnection::callFailed(CallId id, const std::string& description) {
    // Lives until the end: what the reply holds may be what holds this connection.
    const HelperCalls::Ended ended = calls_.end(id);
    if (!ended.empty()) {
        fail(description);
    }
}

void DBusHelperConnection::fail(const std::string& description) {
    tell<const std::string&>(handlers_.failed, description);
}

void DBusHelperConnection::ownerLeft(CallId lastCall) {
    if (!link_) {
        return;
    }
    const HelperCalls::Ended lost = calls_.endUpTo(lastCall);
    tell(handlers_.interrupted);
}

void DBusHelperConnection::unavailable() {
    if (!link_) {
        return;
    }
    const HelperCalls::Ended lost = calls_.endAll();
    close();
    tell(handlers_.invalidated);
}

}  // namespace corvane
