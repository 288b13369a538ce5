#pragma once

#include <functional>

#include <sdbus-c++/IConnection.h>

namespace corvane {

/// Hears what the login manager tells of suspends. Belongs to the thread that pumps the connection, which is
/// begun afterwards.
class LogindSignals {
public:
    /// `prepareForSleep` runs before each suspend, with true, and after it, with false; `restarted` when the
    /// login manager has come up, anew or at last. Waits for the bus; throws sdbus::Error.
    LogindSignals(sdbus::IConnection& connection, std::function<void(bool isGoingDown)> prepareForSleep,
                  std::function<void()> restarted);

private:
    sdbus::Slot suspends_;
    sdbus::Slot owner_;
};

}  // namespace corvane
