#include "demo/HelperProxy.h"

#include <chrono>
#include <tuple>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/StatusCodec.h"

namespace corvane {

namespace {

constexpr std::chrono::seconds longestWait(5);

template <typename... Arguments>
std::string call(sdbus::IProxy& proxy, const char* member, const Arguments&... arguments) {
    bool ok = false;
    std::string text;
    proxy.callMethod(member)
        .onInterface(HelperAddress::interface)
        .withTimeout(longestWait)
        .withArguments(arguments...)
        .storeResultsTo(ok, text);
    return text;
}

}  // namespace

HelperProxy::HelperProxy(const HelperBus& bus)
    : connection_(bus.connect()),
      proxy_(sdbus::createProxy(*connection_, HelperAddress::busName, HelperAddress::objectPath)) {}

std::string HelperProxy::ping() {
    return call(*proxy_, "pingWithReply");
}

std::string HelperProxy::setFanFloor(double percent) {
    return call(*proxy_, "setFanFloorWithPercentWithReply", percent);
}

std::string HelperProxy::stopBoost() {
    return call(*proxy_, "stopBoostWithReply");
}

StatusRecord HelperProxy::status() {
    const auto call = proxy_->createMethodCall(HelperAddress::interface, "getStatusWithReply");
    auto reply = proxy_->callMethod(call, longestWait);
    return fromBus(reply);
}

}  // namespace corvane
