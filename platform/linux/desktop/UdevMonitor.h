#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/linux/desktop/QtDescriptor.h"

struct udev_monitor;

namespace corvane {

/// Hears of devices of one subsystem that come, go or change, once udev has dealt with them. Lives on a
/// thread with a Qt event loop.
class UdevMonitor {
public:
    /// `subsystem` is the kernel's name for it, such as "drm". `changed` runs for each batch of events that
    /// has arrived; it may not destroy this. Where no udev runs, or the system does not let it listen, it
    /// never runs.
    UdevMonitor(const char* subsystem, std::function<void()> changed);
    UdevMonitor(const UdevMonitor&) = delete;
    UdevMonitor& operator=(const UdevMonitor&) = delete;
    ~UdevMonitor();

private:
    struct Unreference {
        void operator()(udev_monitor* monitor) const;
    };

    void takeEvents();

    std::function<void()> changed_;
    /// Null when there is nothing to listen to.
    std::unique_ptr<udev_monitor, Unreference> monitor_;
    /// A duplicate of the monitor's own.
    std::optional<QtDescriptor> descriptor_;
};

}  // namespace corvane
