#pragma once

#include <functional>
#include <string>

#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/Message.h>

#include "platform/linux/BusNameWatch.h"

namespace corvane {

/// Hears what the login manager tells of suspends, and believes nobody else. Belongs to the thread that pumps
/// the connection, which is begun afterwards.
class LogindSignals {
public:
    /// `prepareForSleep` runs before each suspend, with true, and after it, with false; `restarted` when the
    /// login manager has come up, anew or at last. Waits for the bus; throws sdbus::Error.
    LogindSignals(sdbus::IConnection& connection, std::function<void(bool isGoingDown)> prepareForSleep,
                  std::function<void()> restarted);
    LogindSignals(const LogindSignals&) = delete;
    LogindSignals& operator=(const LogindSignals&) = delete;
    ~LogindSignals() = default;

private:
    void hear(sdbus::Message& signal);
    void changeOwner(const OwnerChange& change);

    std::function<void(bool isGoingDown)> prepareForSleep_;
    std::function<void()> restarted_;
    /// The login manager's unique name; empty while there is none.
    std::string owner_;
    sdbus::Slot suspends_;
    sdbus::Slot ownerWatch_;
};

}  // namespace corvane
