#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <poll.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"
#include "platform/linux/StatusCodec.h"
#include "tests/support/Notes.h"

namespace corvane {

/// Someone on a bus who calls the helper. Belongs to one thread.
class BusCaller {
public:
    using TextReply = std::pair<bool, std::string>;

    explicit BusCaller(const std::string& address)
        : connection_(HelperBus{address}.connect()),
          proxy_(sdbus::createProxy(*connection_, HelperAddress::busName, HelperAddress::objectPath)) {
        connection_->setMethodCallTimeout(testPatience);
    }

    /// Calls and waits for the reply; throws sdbus::Error.
    template <typename... Args>
    TextReply call(const std::string& member, const Args&... args) {
        TextReply reply;
        proxy_->callMethod(member)
            .onInterface(HelperAddress::interface)
            .withArguments(args...)
            .storeResultsTo(reply.first, reply.second);
        return reply;
    }

    StatusRecord status() {
        const auto call = proxy_->createMethodCall(HelperAddress::interface, "getStatusWithReply");
        auto reply = proxy_->callMethod(call);
        return fromBus(reply);
    }

    /// The name of the error that the call is answered with; "no error" when there is none.
    template <typename... Args>
    std::string errorOf(const std::string& interface, const std::string& member, const Args&... args) {
        try {
            proxy_->callMethod(member).onInterface(interface).withArguments(args...);
            return "no error";
        } catch (const sdbus::Error& error) {
            return error.getName();
        }
    }

    /// Sends a call that has no arguments and goes on. `done` gets the error's name, empty for a good reply,
    /// while `processUntil` runs.
    template <typename... Reply>
    void begin(const std::string& member, std::function<void(const std::string& error)> done) {
        proxy_->callMethodAsync(member)
            .onInterface(HelperAddress::interface)
            .uponReplyInvoke([done = std::move(done)](const sdbus::Error* error, const Reply&... /*values*/) {
                done(error == nullptr ? "" : error->getName());
            });
    }

    /// Handles replies until `isDone`; false when that did not happen in the time a test waits.
    bool processUntil(const std::function<bool()>& isDone) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (!isDone()) {
            if (connection_->processPendingRequest()) {
                continue;
            }
            const auto data = connection_->getEventLoopPollData();
            pollfd waiting{data.fd, data.events, 0};
            poll(&waiting, 1, 100);
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
        }
        return true;
    }

    [[nodiscard]] sdbus::IConnection& connection() { return *connection_; }

private:
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IProxy> proxy_;
};

}  // namespace corvane
