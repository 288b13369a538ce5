#pragma once

#include "platform/ServiceWatchdog.h"

namespace corvane {

/// systemd's watchdog, when the unit asks for one.
class SystemdWatchdog final : public ServiceWatchdog {
public:
    SystemdWatchdog();

    [[nodiscard]] Duration interval() const override { return interval_; }
    void feed() override;

private:
    Duration interval_{};
};

}  // namespace corvane
