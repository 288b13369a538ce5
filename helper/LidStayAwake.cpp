// The lid setting of FanHelperService.

#include "helper/DaemonLog.h"
#include "helper/FanHelperService.h"

namespace corvane {

void FanHelperService::setLidStayAwake(bool on) {
    lidStayAwake_ = on;
    runDisableSleep(on);
    logDaemon(log_, ": lid-stay-awake {}", on ? "ON (disablesleep 1)" : "off (disablesleep 0)");
}

void FanHelperService::clearLidStayAwake() {
    lidStayAwake_ = false;
    runDisableSleep(false);
}

/// A failure is logged and otherwise ignored: the flag keeps what was asked for, so that the watchdog and the
/// termination handler still try to switch it back.
void FanHelperService::runDisableSleep(bool on) {
    if (const std::optional<std::string> failure = sleepSetting_.setSleepDisabled(on)) {
        logDaemon(log_, ": pmset disablesleep failed: {}", *failure);
    }
}

}  // namespace corvane
