#pragma once

#include "platform/CommandPlatform.h"
#include "platform/macos/MacClock.h"
#include "platform/macos/NSLogLog.h"
#include "platform/posix/SignalPause.h"
#include "platform/posix/StdioConsole.h"

namespace corvane {

/// A diagnostic command on a Mac, on its SMC.
class MacCommandPlatform : public CommandPlatform {
public:
    Console& console() override { return console_; }
    InterruptiblePause& pause() override { return pause_; }
    [[nodiscard]] bool isRoot() const override;
    std::unique_ptr<SmcConnection> makeSmcConnection() override;

protected:
    Log& log() { return log_; }

private:
    NSLogLog log_;
    StdioConsole console_;
    SignalPause pause_{macBootTime};
};

}  // namespace corvane
