#include "platform/linux/LogindSignals.h"

#include <optional>
#include <utility>

#include <fmt/format.h>
#include <sdbus-c++/Error.h>

#include "platform/linux/LogindLock.h"

namespace corvane {

namespace {

/// None from a message that is not what the login manager sends.
std::optional<bool> readFlag(sdbus::Message& message) {
    try {
        bool flag = false;
        message >> flag;
        return message ? std::optional(flag) : std::nullopt;
    } catch (const sdbus::Error&) {
        return std::nullopt;
    }
}

}  // namespace

LogindSignals::LogindSignals(sdbus::IConnection& connection,
                             std::function<void(bool isGoingDown)> prepareForSleep,
                             std::function<void()> restarted)
    : prepareForSleep_(std::move(prepareForSleep)),
      restarted_(std::move(restarted)),
      suspends_(connection.addMatch(
          fmt::format("type='signal',sender='{}',path='{}',interface='{}',member='PrepareForSleep'",
                      Logind::busName, Logind::objectPath, Logind::interface),
          [this](sdbus::Message& signal) { hear(signal); })),
      ownerWatch_(watchBusName(connection, Logind::busName,
                               [this](const OwnerChange& change) { changeOwner(change); })) {
    // Asked for last: changes from now on are told of.
    owner_ = busNameOwner(connection, Logind::busName);
}

void LogindSignals::hear(sdbus::Message& signal) {
    // Whoever addresses this connection directly gets past the rule's sender.
    if (owner_.empty() || signal.getSender() != owner_) {
        return;
    }
    // An exception would pass through the bus library, which is written in C.
    if (const auto isGoingDown = readFlag(signal)) {
        prepareForSleep_(*isGoingDown);
    }
}

void LogindSignals::changeOwner(const OwnerChange& change) {
    owner_ = change.current;
    if (!owner_.empty()) {
        restarted_();
    }
}

}  // namespace corvane
