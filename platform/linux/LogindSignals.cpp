#include "platform/linux/LogindSignals.h"

#include <optional>
#include <string>
#include <utility>

#include <fmt/format.h>
#include <sdbus-c++/Error.h>
#include <sdbus-c++/Message.h>

#include "platform/linux/BusNameWatch.h"
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
    : suspends_(connection.addMatch(
          fmt::format("type='signal',sender='{}',path='{}',interface='{}',member='PrepareForSleep'",
                      Logind::busName, Logind::objectPath, Logind::interface),
          [prepareForSleep = std::move(prepareForSleep)](sdbus::Message& message) {
              // An exception would pass through the bus library, which is written in C.
              if (const auto isGoingDown = readFlag(message)) {
                  prepareForSleep(*isGoingDown);
              }
          })),
      owner_(watchBusName(connection, Logind::busName,
                          [restarted = std::move(restarted)](const OwnerChange& change) {
                              if (!change.current.empty()) {
                                  restarted();
                              }
                          })) {}

}  // namespace corvane
