#pragma once

#include <memory>
#include <string>

#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/IProxy.h>

#include "platform/StatusRecord.h"
#include "platform/linux/HelperBus.h"

namespace corvane {

/// The helper as a caller on its bus sees it. Every call waits for its answer, for at most 5 s, and throws
/// sdbus::Error when there is none.
class HelperProxy {
public:
    explicit HelperProxy(const HelperBus& bus);

    /// Each answers the helper's own text.
    std::string ping();
    std::string setFanFloor(double percent);
    std::string stopBoost();

    StatusRecord status();

private:
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IProxy> proxy_;
};

}  // namespace corvane
