#include "bench/CountingCaller.h"

#include <stdexcept>
#include <thread>

#include "platform/linux/HelperBus.h"
#include "platform/linux/StatusCodec.h"

namespace corvane {

namespace {

constexpr int longestWaitMs = 5000;

}  // namespace

CountingCaller::CountingCaller(const std::string& address)
    : connection_(HelperBus{address}.connect()),
      proxy_(sdbus::createProxy(*connection_, HelperAddress::busName, HelperAddress::objectPath)) {}

template <typename... Results, typename... Arguments>
void CountingCaller::call(const std::string& method, Arguments... arguments) {
    isWaiting_ = true;
    proxy_->callMethodAsync(method)
        .onInterface(HelperAddress::interface)
        .withArguments(arguments...)
        .uponReplyInvoke([this](const sdbus::Error* error, const Results&... /*results*/) { take(error); });
}

void CountingCaller::setFloor(double percent) {
    call<bool, std::string>("setFanFloorWithPercentWithReply", percent);
}

void CountingCaller::ping() {
    call<bool, std::string>("pingWithReply");
}

void CountingCaller::callOnAndOn() {
    isCallingOn_ = true;
    callNext();
}

void CountingCaller::callNext() {
    if (answers_ % 2 == 0) {
        ping();
    } else {
        call<BusDictionary>("getStatusWithReply");
    }
}

void CountingCaller::take(const sdbus::Error* error) {
    ++answers_;
    errors_ += error != nullptr ? 1 : 0;
    isWaiting_ = false;
    if (isCallingOn_) {
        callNext();
    }
}

pollfd CountingCaller::interest() const {
    const auto poll = connection_->getEventLoopPollData();
    return {poll.fd, poll.events, 0};
}

void CountingCaller::process() {
    while (connection_->processPendingRequest()) {
    }
}

bool CountingCaller::awaitAnswer() {
    process();
    while (isWaiting_) {
        pollfd waiting = interest();
        if (::poll(&waiting, 1, longestWaitMs) <= 0) {
            return false;
        }
        process();
    }
    return true;
}

void CountingCaller::awaitConsent() {
    if (!awaitAnswer() || errors_ != 0) {
        throw std::runtime_error("the helper refuses a call, or does not answer it");
    }
}

void CountingCaller::holdFloor(double percent) {
    setFloor(percent);
    awaitConsent();
}

void CountingCaller::keepInTouch(std::chrono::steady_clock::time_point deadline) {
    while (std::chrono::steady_clock::now() < deadline) {
        ping();
        awaitConsent();
        std::this_thread::sleep_for(std::chrono::seconds(1));
    }
}

}  // namespace corvane
