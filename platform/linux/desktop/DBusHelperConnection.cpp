#include "platform/linux/desktop/DBusHelperConnection.h"

#include <utility>

namespace corvane {

namespace {

/// A call's time is counted in rounds, of which a queue that stood still makes up for one only: a reply that
/// arrived during a suspend is heard before the call counts as late.
constexpr int roundsOfACall = 5;

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
    : busThread_(busThread), mainLoop_(mainLoop), timeout_(timeout), handlers_(std::move(handlers)) {
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

void DBusHelperConnection::request(HelperRequest request, std::function<void(HelperAnswer)> deliver) {
    if (!link_) {
        return;
    }
    const CallId id = ++lastCall_;
    if (calls_.size() >= maxUnderWay) {
        onMainLoop (&DBusHelperConnection::fail)("Too many requests wait for the helper's answers.");
        return;
    }
    const Duration round = timeout_ / roundsOfACall;
    calls_.emplace(id, Call{std::move(deliver), roundsOfACall,
                            mainLoop_.every(round, round, [this, id] { endRound(id); })});
    onBusThread([id, request](HelperLink& link) { link.send(id, request); });
}

void DBusHelperConnection::endRound(CallId id) {
    if (--calls_.at(id).roundsLeft == 0) {
        onBusThread([id](HelperLink& link) { link.forget(id); });
        callFailed(id, "The helper did not answer in time.");
    }
}

void DBusHelperConnection::answered(CallId id, HelperAnswer answer) {
    if (const auto call = calls_.extract(id)) {
        call.mapped().deliver(std::move(answer));
    }
}

void DBusHelperConnection::callFailed(CallId id, const std::string& description) {
    // Lives until the end: what the reply holds may be what holds this connection.
    if (const auto call = calls_.extract(id)) {
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
    std::map<CallId, Call> lost;
    while (!calls_.empty() && calls_.begin()->first <= lastCall) {
        lost.insert(calls_.extract(calls_.begin()));
    }
    tell(handlers_.interrupted);
}

void DBusHelperConnection::unavailable() {
    if (!link_) {
        return;
    }
    const std::map<CallId, Call> lost = std::exchange(calls_, {});
    close();
    tell(handlers_.invalidated);
}

}  // namespace corvane
