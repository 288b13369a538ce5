#pragma once

#include <string>

#include "platform/HelperPlatform.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/LinuxMainLoop.h"
#include "platform/linux/LogindSleepSetting.h"
#include "platform/linux/StderrLog.h"

namespace corvane {

/// The helper on Linux: this machine's fans, its login manager, its service manager.
class LinuxHelperPlatform : public HelperPlatform {
public:
    LinuxHelperPlatform(HelperBus bus, std::string sysfsRoot);

    Log& log() override { return log_; }
    MainLoop& mainLoop() override { return mainLoop_; }
    [[nodiscard]] UserIds userIds() const override;
    std::unique_ptr<SerialQueue> makeQueue(std::string_view label) override;
    std::unique_ptr<SmcConnection> makeSmcConnection(SerialQueue& queue) override;
    std::unique_ptr<SystemSleepSetting> makeSystemSleepSetting() override;
    std::unique_ptr<SuspendObserver> makeSuspendObserver() override;
    std::unique_ptr<ServiceWatchdog> makeServiceWatchdog() override;
    std::unique_ptr<HelperListener> makeListener() override;

private:
    StderrLog log_;
    LinuxMainLoop mainLoop_;
    HelperBus bus_;
    std::string sysfsRoot_;
    /// The one that was made; the login manager's restart reaches it here.
    LogindSleepSetting* sleepSetting_ = nullptr;
};

}  // namespace corvane
