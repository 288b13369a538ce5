#pragma once

#include <functional>
#include <string>

#include <asio/io_context.hpp>
#include <asio/posix/stream_descriptor.hpp>
#include <sdbus-c++/IConnection.h>

#include "platform/Lifetime.h"

namespace corvane {

/// Runs a bus connection's input and output on an event loop. Belongs to the loop's thread.
class BusPump {
public:
    /// `onLost` runs once, with the reason, when the bus has gone away; the connection is dead then. Throws
    /// sdbus::Error for one that is dead already.
    BusPump(asio::io_context& context, sdbus::IConnection& connection,
            std::function<void(const std::string&)> onLost);
    BusPump(const BusPump&) = delete;
    BusPump& operator=(const BusPump&) = delete;
    ~BusPump();

    /// Handles what has arrived and waits for more. Called once to begin with.
    void process();

    /// Runs `sending`, which sends a message outside of a handler, and sees to it that all of it goes out. A
    /// bus that has gone away swallows it.
    void send(const std::function<void()>& sending);

    /// Whether messages wait to be sent because the bus takes none. False for a bus that has gone away.
    [[nodiscard]] bool isCongested() const;

private:
    /// These throw sdbus::Error when the bus has gone away.
    [[nodiscard]] bool wantsToWrite() const;
    void arm();

    void leaveDescriptor();
    void await(asio::posix::stream_descriptor::wait_type type, bool& isWaiting);

    asio::io_context& context_;
    sdbus::IConnection& connection_;
    std::function<void(const std::string&)> onLost_;
    asio::posix::stream_descriptor descriptor_;
    Lifetime lifetime_;
    bool isReading_ = false;
    bool isWriting_ = false;
};

}  // namespace corvane
