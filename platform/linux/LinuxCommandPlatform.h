#pragma once

#include <string>

#include "platform/CommandPlatform.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/StderrLog.h"
#include "platform/posix/SignalPause.h"
#include "platform/posix/StdioConsole.h"

namespace corvane {

/// A diagnostic command on Linux, on this machine's fans.
class LinuxCommandPlatform : public CommandPlatform {
public:
    explicit LinuxCommandPlatform(std::string sysfsRoot);

    Console& console() override { return console_; }
    InterruptiblePause& pause() override { return pause_; }
    [[nodiscard]] bool isRoot() const override;
    std::unique_ptr<SmcConnection> makeSmcConnection() override;

protected:
    Log& log() { return log_; }

private:
    std::string sysfsRoot_;
    StderrLog log_;
    StdioConsole console_;
    SignalPause pause_{linuxBootTime};
};

}  // namespace corvane
