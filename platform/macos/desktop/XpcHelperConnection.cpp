#include "platform/macos/desktop/XpcHelperConnection.h"

#include <optional>
#include <utility>
#include <variant>

namespace corvane {

namespace {

HelperCalls::Deliver deliverText(FanHelperProtocol::Reply reply) {
    return [reply = std::move(reply)](HelperAnswer answer) {
        auto& [ok, text] = std::get<TextAnswer>(answer);
        reply(ok, std::move(text));
    };
}

/// A copy, so that what it does may destroy where it came from.
template <typename... Values>
void tellHandler(std::function<void(Values...)> handler, const Values&... values) {
    if (handler) {
        handler(values...);
    }
}

}  // namespace

XpcHelperConnection::XpcHelperConnection(SerialQueue& mainLoop, Duration timeout,
                                         HelperConnectionHandlers handlers)
    : mainLoop_(mainLoop),
      handlers_(std::move(handlers)),
      calls_(mainLoop, timeout,
             [this](CallId call) { callFailed(call, "The helper did not answer in time."); }),
      link_(std::make_unique<XpcHelperLink>(
          mainLoop, XpcHelperLinkEvents{
                        [this](CallId call, HelperAnswer answer) { calls_.answer(call, std::move(answer)); },
                        [this](CallId call, const std::string& why) { callFailed(call, why); },
                        [this](CallId lastCall) { ownerLeft(lastCall); }, [this] { unavailable(); }})) {}

void XpcHelperConnection::pingWithReply(Reply reply) {
    request([](XpcHelperLink& link, CallId call) { link.ping(call); }, deliverText(std::move(reply)));
}

void XpcHelperConnection::getStatusWithReply(StatusReply reply) {
    request([](XpcHelperLink& link, CallId call) { link.getStatus(call); },
            [reply = std::move(reply)](HelperAnswer answer) {
                reply(std::get<StatusRecord>(std::move(answer)));
            });
}

void XpcHelperConnection::setFanFloorWithPercentWithReply(double percent, Reply reply) {
    request([percent](XpcHelperLink& link, CallId call) { link.setFanFloor(call, percent); },
            deliverText(std::move(reply)));
}

void XpcHelperConnection::stopBoostWithReply(Reply reply) {
    request([](XpcHelperLink& link, CallId call) { link.stopBoost(call); }, deliverText(std::move(reply)));
}

void XpcHelperConnection::setLidStayAwakeWithReply(bool on, Reply reply) {
    request([on](XpcHelperLink& link, CallId call) { link.setLidStayAwake(call, on); },
            deliverText(std::move(reply)));
}

void XpcHelperConnection::request(const Send& send, HelperCalls::Deliver deliver) {
    if (!link_) {
        return;
    }
    const std::optional<CallId> call = calls_.begin(std::move(deliver));
    if (call) {
        send(*link_, *call);
    } else {
        mainLoop_.async(
            lifetime_.bound([this] { fail("Too many requests wait for the helper's answers."); }));
    }
}

void XpcHelperConnection::callFailed(CallId call, const std::string& description) {
    // Lives until the end: what the reply holds may be what holds this connection.
    const HelperCalls::Ended ended = calls_.end(call);
    if (!ended.empty()) {
        fail(description);
    }
}

void XpcHelperConnection::fail(const std::string& description) {
    tellHandler<const std::string&>(handlers_.failed, description);
}

void XpcHelperConnection::ownerLeft(CallId lastCall) {
    const HelperCalls::Ended lost = calls_.endUpTo(lastCall);
    tellHandler(handlers_.interrupted);
}

void XpcHelperConnection::unavailable() {
    if (!link_) {
        return;
    }
    const HelperCalls::Ended lost = calls_.endAll();
    // Which tells nothing more.
    const auto link = std::move(link_);
    tellHandler(handlers_.invalidated);
}

}  // namespace corvane
