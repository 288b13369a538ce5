#pragma once

#include <memory>
#include <string>

#include <sdbus-c++/IConnection.h>

#include "platform/linux/desktop/EnvironmentLookup.h"

namespace corvane {

/// The bus that the user's own service manager is on: the user's, which all sessions share, else the
/// session's. As a rule they are the same.
class UserBus {
public:
    /// Looks into the environment now.
    explicit UserBus(const EnvironmentLookup& environment);

    /// Waits for the bus; throws sdbus::Error. Any thread.
    [[nodiscard]] std::unique_ptr<sdbus::IConnection> connect() const;

private:
    /// The socket of the user's bus; empty when the environment names none.
    std::string path_;
};

}  // namespace corvane
