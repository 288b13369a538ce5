#pragma once

#include <memory>

#include "platform/CommandPlatform.h"
#include "smc/csmc.h"

namespace corvane {

/// Gives csmc the platform's connection for as long as it lives.
class SmcSession {
public:
    explicit SmcSession(CommandPlatform& platform) : connection_(platform.makeSmcConnection()) {
        csmc_use_connection(connection_.get());
    }
    SmcSession(const SmcSession&) = delete;
    SmcSession& operator=(const SmcSession&) = delete;
    ~SmcSession() { csmc_use_connection(nullptr); }

private:
    std::unique_ptr<SmcConnection> connection_;
};

}  // namespace corvane
