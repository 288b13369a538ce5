#include "platform/linux/desktop/UdevMonitor.h"

#include <utility>

#include <fcntl.h>
#include <libudev.h>

namespace corvane {

namespace {

/// Null when it cannot be had.
udev_monitor* listen(const char* subsystem) {
    udev* const context = udev_new();
    if (context == nullptr) {
        return nullptr;
    }
    udev_monitor* monitor = udev_monitor_new_from_netlink(context, "udev");
    // The monitor keeps it.
    udev_unref(context);
    if (monitor != nullptr &&
        (udev_monitor_filter_add_match_subsystem_devtype(monitor, subsystem, nullptr) < 0 ||
         udev_monitor_enable_receiving(monitor) < 0)) {
        monitor = udev_monitor_unref(monitor);
    }
    return monitor;
}

}  // namespace

void UdevMonitor::Unreference::operator()(udev_monitor* monitor) const {
    udev_monitor_unref(monitor);
}

UdevMonitor::UdevMonitor(const char* subsystem, std::function<void()> changed)
    : changed_(std::move(changed)), monitor_(listen(subsystem)) {
    if (!monitor_) {
        return;
    }
    const int descriptor = fcntl(udev_monitor_get_fd(monitor_.get()), F_DUPFD_CLOEXEC, 0);
    if (descriptor >= 0) {
        descriptor_.emplace(descriptor, [this] { takeEvents(); });
    }
}

UdevMonitor::~UdevMonitor() = default;

void UdevMonitor::takeEvents() {
    bool isAny = false;
    // Null for what does not concern it, too: the rest is then read at the descriptor's next turn.
    while (udev_device* const device = udev_monitor_receive_device(monitor_.get())) {
        udev_device_unref(device);
        isAny = true;
    }
    if (isAny) {
        changed_();
    }
}

}  // namespace corvane
