#pragma once

#include "platform/SerialQueue.h"

namespace corvane {

/// The service manager's watchdog over this process, if it keeps one.
class ServiceWatchdog {
public:
    ServiceWatchdog() = default;
    ServiceWatchdog(const ServiceWatchdog&) = delete;
    ServiceWatchdog& operator=(const ServiceWatchdog&) = delete;
    virtual ~ServiceWatchdog() = default;

    /// How often it wants to be fed; zero when there is none. The manager kills and restarts a process that
    /// stays silent for twice this.
    [[nodiscard]] virtual Duration interval() const = 0;

    /// Any thread.
    virtual void feed() = 0;
};

}  // namespace corvane
