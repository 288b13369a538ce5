#pragma once

#include <memory>
#include <utility>

#include "platform/SmcConnection.h"
#include "smc/csmc.h"

namespace corvane {

/// Lends csmc a connection for as long as it lives; afterwards there is no controller. One at a time.
class SmcSession {
public:
    explicit SmcSession(std::unique_ptr<SmcConnection> connection) : connection_(std::move(connection)) {
        csmc_use_connection(connection_.get());
    }
    SmcSession(const SmcSession&) = delete;
    SmcSession& operator=(const SmcSession&) = delete;
    ~SmcSession() { csmc_use_connection(nullptr); }

private:
    std::unique_ptr<SmcConnection> connection_;
};

}  // namespace corvane
