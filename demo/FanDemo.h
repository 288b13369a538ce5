#pragma once

#include <string>

#include "demo/HelperProxy.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// Shows the helper at work on the simulated Mac: raises its load, holds a floor, lets it cool down and hands
/// the fans back, with a line of status every second on standard output.
class FanDemo {
public:
    /// `scenarioPath` names the simulated Mac's control file. Everything outlives the demonstration, which
    /// runs on `queue`.
    FanDemo(HelperProxy& helper, SerialQueue& queue, std::string scenarioPath);

    /// True when the fans are back with the firmware in the end. Throws sdbus::Error when the helper does not
    /// answer.
    bool run();

private:
    void setLoad(int watts);
    void watch(int seconds);
    bool watchUntil(bool (*isReached)(const StatusRecord& status));
    StatusRecord showStatus();

    HelperProxy& helper_;
    SerialQueue& queue_;
    std::string scenarioPath_;
    int second_ = 0;
};

}  // namespace corvane
