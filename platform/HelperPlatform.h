#pragma once

#include <memory>
#include <string_view>

#include "platform/HelperListener.h"
#include "platform/Log.h"
#include "platform/MainLoop.h"
#include "platform/SerialQueue.h"
#include "platform/ServiceWatchdog.h"
#include "platform/SmcConnection.h"
#include "platform/SuspendObserver.h"
#include "platform/SystemSleepSetting.h"

namespace corvane {

/// User ids of this process.
struct UserIds {
    int uid = 0;
    int euid = 0;
};

/// Everything the helper needs of a platform. The composition root calls each `make` once, in the order of
/// declaration, on the main thread, and destroys what it got in reverse order, before the platform.
class HelperPlatform {
public:
    HelperPlatform() = default;
    HelperPlatform(const HelperPlatform&) = delete;
    HelperPlatform& operator=(const HelperPlatform&) = delete;
    virtual ~HelperPlatform() = default;

    virtual Log& log() = 0;
    virtual MainLoop& mainLoop() = 0;
    [[nodiscard]] virtual UserIds userIds() const = 0;

    virtual std::unique_ptr<SerialQueue> makeQueue(std::string_view label) = 0;
    /// The connection lives on `queue`'s time and is used on `queue` only.
    virtual std::unique_ptr<SmcConnection> makeSmcConnection(SerialQueue& queue) = 0;
    virtual std::unique_ptr<SystemSleepSetting> makeSystemSleepSetting() = 0;
    virtual std::unique_ptr<SuspendObserver> makeSuspendObserver() = 0;
    virtual std::unique_ptr<ServiceWatchdog> makeServiceWatchdog() = 0;
    virtual std::unique_ptr<HelperListener> makeListener() = 0;
};

}  // namespace corvane
