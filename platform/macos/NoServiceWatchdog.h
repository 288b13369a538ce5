#pragma once

#include "platform/ServiceWatchdog.h"

namespace corvane {

/// launchd keeps no watchdog over its services.
class NoServiceWatchdog final : public ServiceWatchdog {
public:
    [[nodiscard]] Duration interval() const override { return {}; }
    void feed() override {}
};

}  // namespace corvane
