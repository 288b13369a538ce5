#include "platform/linux/BusPump.h"

#include <utility>

#include <asio/post.hpp>
#include <poll.h>
#include <sdbus-c++/Error.h>

namespace corvane {

namespace {

/// Messages handled in one go before signals and replies get their turn.
constexpr int messagesPerRound = 32;

}  // namespace

BusPump::BusPump(asio::io_context& context, sdbus::IConnection& connection,
                 std::function<void(const std::string&)> onLost)
    : context_(context),
      connection_(connection),
      onLost_(std::move(onLost)),
      descriptor_(context, connection.getEventLoopPollData().fd) {}

BusPump::~BusPump() {
    leaveDescriptor();
}

void BusPump::process() {
    try {
        for (int handled = 0; connection_.processPendingRequest(); ++handled) {
            if (handled == messagesPerRound) {
                asio::post(context_, lifetime_.bound([this] { process(); }));
                return;
            }
        }
        arm();
    } catch (const sdbus::Error& error) {
        // The connection has closed it: the next one on this loop may get the same number.
        leaveDescriptor();
        // A read and a write may both find out.
        if (const auto onLost = std::exchange(onLost_, nullptr)) {
            onLost(error.getMessage());
        }
    }
}

void BusPump::send(const std::function<void()>& sending) {
    try {
        sending();
        arm();
    } catch (const sdbus::Error&) {
        // The next `process` finds out and tells.
    }
}

bool BusPump::isCongested() const {
    try {
        return wantsToWrite();
    } catch (const sdbus::Error&) {
        // A connection that was lost tells nothing.
        return false;
    }
}

/// The descriptor is the connection's.
void BusPump::leaveDescriptor() {
    if (descriptor_.is_open()) {
        descriptor_.release();
    }
}

bool BusPump::wantsToWrite() const {
    return (connection_.getEventLoopPollData().events & POLLOUT) != 0;
}

void BusPump::arm() {
    const bool isToWrite = wantsToWrite();
    await(asio::posix::stream_descriptor::wait_read, isReading_);
    if (isToWrite) {
        await(asio::posix::stream_descriptor::wait_write, isWriting_);
    }
}

void BusPump::await(asio::posix::stream_descriptor::wait_type type, bool& isWaiting) {
    if (isWaiting) {
        return;
    }
    isWaiting = true;
    descriptor_.async_wait(type, lifetime_.bound([this, &isWaiting](const std::error_code& error) {
        if (!error) {
            isWaiting = false;
            process();
        }
    }));
}

}  // namespace corvane
