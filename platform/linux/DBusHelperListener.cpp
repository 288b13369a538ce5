#include "platform/linux/DBusHelperListener.h"

#include <utility>

#include <asio/post.hpp>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/StatusCodec.h"

namespace corvane {

namespace {

using TextResult = sdbus::Result<bool, std::string>;
using StatusResult = sdbus::Result<BusDictionary>;

constexpr const char* limitsExceeded = "org.freedesktop.DBus.Error.LimitsExceeded";

/// A call that waits for its answer. The members are destroyed from the last to the first: the message before
/// the connection it came from.
template <typename Result>
struct WaitingCall {
    std::shared_ptr<sdbus::IConnection> connection;
    RequestLimiter::Place place;
    Result result;
};

}  // namespace

DBusHelperListener::DBusHelperListener(asio::io_context& context, HelperBus bus,
                                       std::function<void(const std::string&)> onLost)
    : context_(context), bus_(std::move(bus)), onLost_(std::move(onLost)) {}

DBusHelperListener::~DBusHelperListener() = default;

std::optional<std::string> DBusHelperListener::resume(HelperListenerDelegate& delegate) {
    served_ = delegate.acceptConnection();
    if (!served_) {
        return "the connection was refused";
    }
    try {
        connection_ = bus_.connect();
        publish();
        connection_->requestName(HelperAddress::busName);
    } catch (const sdbus::Error& error) {
        return error.getMessage();
    }
    pump_ = std::make_shared<BusPump>(context_, *connection_, onLost_);
    pump_->process();
    return std::nullopt;
}

/// Hands one call to the served object: `call` gets a function that sends the answer, from any thread.
template <typename Result, typename Call>
void DBusHelperListener::serve(Result&& result, const Call& call) {
    auto place = limiter_->admit(object_->getCurrentlyProcessedMessage()->getSender());
    if (!place) {
        result.returnError(sdbus::Error(limitsExceeded, "Too many requests are waiting for their answers."));
        return;
    }
    using Waiting = WaitingCall<std::decay_t<Result>>;
    auto waiting =
        std::make_shared<Waiting>(Waiting{connection_, std::move(place), std::forward<Result>(result)});
    call([&context = context_, pump = std::weak_ptr(pump_), waiting](auto&&... values) {
        asio::post(context, [pump, waiting, ... values = std::forward<decltype(values)>(values)] {
            if (const auto alive = pump.lock()) {
                alive->send([&] { waiting->result.returnResults(values...); });
            }
        });
    });
}

void DBusHelperListener::publish() {
    object_ = sdbus::createObject(*connection_, HelperAddress::objectPath);
    object_->registerMethod("pingWithReply")
        .onInterface(HelperAddress::interface)
        .implementedAs([this](TextResult&& result) {
            serve(std::move(result), [this](auto answer) { served_->pingWithReply(std::move(answer)); });
        });
    object_->registerMethod("getStatusWithReply")
        .onInterface(HelperAddress::interface)
        .implementedAs([this](StatusResult&& result) {
            serve(std::move(result), [this](auto answer) {
                served_->getStatusWithReply([answer](const StatusRecord& status) { answer(toBus(status)); });
            });
        });
    object_->registerMethod("setFanFloorWithPercentWithReply")
        .onInterface(HelperAddress::interface)
        .implementedAs([this](TextResult&& result, double percent) {
            serve(std::move(result), [this, percent](auto answer) {
                served_->setFanFloorWithPercentWithReply(percent, std::move(answer));
            });
        });
    object_->registerMethod("stopBoostWithReply")
        .onInterface(HelperAddress::interface)
        .implementedAs([this](TextResult&& result) {
            serve(std::move(result), [this](auto answer) { served_->stopBoostWithReply(std::move(answer)); });
        });
    object_->registerMethod("setLidStayAwakeWithReply")
        .onInterface(HelperAddress::interface)
        .implementedAs([this](TextResult&& result, bool on) {
            serve(std::move(result),
                  [this, on](auto answer) { served_->setLidStayAwakeWithReply(on, std::move(answer)); });
        });
    object_->finishRegistration();
}

}  // namespace corvane
