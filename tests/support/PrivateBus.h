#pragma once

#include <optional>
#include <string>

#include <sys/types.h>

namespace corvane {

/// A message bus of a test's own: a bus daemon that anybody of this user may connect to, with room for
/// thousands of connections. Not thread-safe.
class PrivateBus {
public:
    /// Starts the daemon and waits until it can be reached. Check `problem` afterwards.
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    /// Why there is no bus, or nothing.
    [[nodiscard]] const std::optional<std::string>& problem() const { return problem_; }

    [[nodiscard]] const std::string& address() const { return address_; }

    /// From now on a call to `name` starts `command`: a program by its full path and its arguments, quoted as
    /// for a shell. The program finds the bus where `address` says. Once for each name.
    void offer(const std::string& name, const std::string& command) const;

    /// Stops the daemon in its tracks, connections and all, until it is ended: what is sent piles up.
    void freeze() const;

    /// Ends the daemon, and with it every connection. May be repeated.
    void end();

    /// After `end`: another daemon at the same place, which is what `place` says. Check `problem` afterwards.
    void startAgain() { start(); }

    /// The address without what tells one daemon from another.
    [[nodiscard]] std::string place() const { return address_.substr(0, address_.find(',')); }

private:
    void start();

    std::string folder_;
    std::string address_;
    std::optional<std::string> problem_;
    pid_t daemon_ = -1;
};

}  // namespace corvane
