#pragma once

#include <memory>
#include <string>

#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/SmcConnection.h"
#include "platform/linux/hwmon/FanOwner.h"

namespace corvane {

struct HwmonOptions {
    /// Absolute path of the tree of device attributes.
    std::string sysfsRoot = "/sys";
    /// Where fans that are not with their firmware are remembered. On a file system that a restart empties:
    /// the firmware has all fans then.
    std::string journalPath = "/run/corvane/fans";
    FanOwner owner = FanOwner::helper;
};

/// The fans and sensors of this machine as a System Management Controller.
///
/// `retryQueue` is the queue on which the connection will be used: there a hand-back that failed is repeated
/// every 2 s. Null for commands without one. It and `log` outlive the connection. A connection that is
/// destroyed leaves the fans as they are; the journal lets the next one hand them back.
[[nodiscard]] std::unique_ptr<SmcConnection> makeHwmonSmc(HwmonOptions options, SerialQueue* retryQueue,
                                                          Log& log);

}  // namespace corvane
