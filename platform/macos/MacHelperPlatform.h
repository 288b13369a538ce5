#pragma once

#include "platform/HelperPlatform.h"
#include "platform/macos/NSLogLog.h"
#include "platform/macos/RunLoopMainLoop.h"

namespace corvane {

/// The helper on a Mac: its SMC, its power management, XPC.
class MacHelperPlatform : public HelperPlatform {
public:
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
    NSLogLog log_;
    RunLoopMainLoop mainLoop_;
};

}  // namespace corvane
