#include "bench/BusCaller.h"

#include <stdexcept>
#include <thread>

#include "platform/linux/HelperBus.h"
#include "platform/linux/StatusCodec.h"

namespace corvane {

namespace {

constexpr int longestWaitMs = 5000;

}  // namespace

BusCaller::BusCaller(const std::string& address)
    : connection_(HelperBus{address}.connect()),
      proxy_(sdbus::createProxy(*connection_, HelperAddress::busName, HelperAddress::objectPath)) {}

template <typename... Results, typename... Arguments>
void BusCaller::call(const std::string& method, Arguments... arguments) {
    isWaiting_ = true;
    proxy_->callMethodAsync(method)
        .onInterface(HelperAddress::interface)
        .withArguments(arguments...)
        .uponReplyInvoke([this](const sdbus::Error* error, const Results&... /*results*/) { take(error); });
}

void BusCaller::setFloor(double percent) {
    call<bool, std::string>("setFanFloorWithPercentWithReply", percent);
}

void BusCaller::ping() {
    call<bool, std::string>("pingWithReply");
}

void BusCaller::callOnAndOn() {
    isCallingOn_ = true;
    callNext();
}

void BusCaller::callNext() {
    if (answers_ % 2 == 0) {
        ping();
    } else {
        call<BusDictionary>("getStatusWithReply");
    }
}

void BusCaller::take(const sdbus::Error* error) {
    ++answers_;
    errors_ += error != nullptr ? 1 : 0;
    isWaiting_ = false;
    if (isCallingOn_) {
        callNext();
    }
}

pollfd BusCaller::interest() const {
    const auto poll = connection_->getEventLoopPollData();
    return {poll.fd, poll.events, 0};
}

void BusCaller::process() {
    while (connection_->processPendingRequest()) {
    }
}

bool BusCaller::awaitAnswer() {
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

void BusCaller::awaitConsent() {
    if (!awaitAnswer() || errors_ != 0) {
        throw std::runtime_error("the helper refuses a call, or does not answer it");
    }
}

void BusCaller::holdFloor(double percent) {
    setFloor(percent);
    awaitConsent();
}

void BusCaller::keepInTouch(std::chrono::steady_clock::time_point deadline) {
    while (std::chrono::steady_clock::now() < deadline) {
        ping();
        awaitConsent();
        std::this_thread::sleep_for(std::chrono::seconds(1));
    }
}

}  // namespace corvane
