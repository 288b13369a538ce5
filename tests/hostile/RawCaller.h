#pragma once

#include <memory>
#include <string>

#include <systemd/sd-bus.h>

namespace corvane {

struct BusMessageRelease {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
/// A message that was not sent yet, or that came.
using BusMessage = std::unique_ptr<sd_bus_message, BusMessageRelease>;

/// A connection to a bus that sends whatever it is told to and reads nothing it does not have to. One thread.
class RawCaller {
public:
    /// `bus` is "system" or a D-Bus address. Throws std::system_error when it cannot be reached.
    explicit RawCaller(const std::string& bus);

    [[nodiscard]] BusMessage methodCall(const char* path, const char* interface, const char* member);
    [[nodiscard]] BusMessage signal(const char* path, const char* interface, const char* member);

    /// Sends without waiting for anything; `isAnswered` is whether an answer is wanted. False when the
    /// message cannot be sent, or the bus has ended the connection.
    bool send(sd_bus_message* message, bool isAnswered);

    /// As many of the messages that have come as there are; throws them away.
    void drain();

    /// Writes out what waits to be written.
    void flush();

    /// Calls and waits. True for an answer that is no error.
    [[nodiscard]] bool call(sd_bus_message* message);

private:
    struct Closed {
        /// Without a word of goodbye, whatever still waits.
        void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
    };

    std::unique_ptr<sd_bus, Closed> bus_;
};

}  // namespace corvane
