#include "app/application/FanLog.h"

#include <utility>

namespace corvane {

FanLog::FanLog(const FanController& fan, Log& log) : fan_(fan), log_(log) {
    connect(&fan, &FanController::helperInstalledChanged, this, &FanLog::writeInstallation);
    connect(&fan, &FanController::helperNeedsUpdateChanged, this, &FanLog::writeInstallation);
    connect(&fan, &FanController::effectivePercentChanged, this, &FanLog::writeDriver);
    connect(&fan, &FanController::thermalOverrideChanged, this, &FanLog::writeThermalOverride);
    writeInstallation();
}

void FanLog::writeInstallation() {
    if (!fan_.helperInstalled()) {
        log_.write("Corvane: the fan helper is not installed");
    } else if (fan_.helperNeedsUpdate()) {
        log_.write("Corvane: the fan helper is installed, an update is there");
    } else {
        log_.write("Corvane: the fan helper is installed");
    }
}

void FanLog::writeDriver() {
    const bool isDriving = fan_.effectivePercent() > 0;
    if (std::exchange(isHelperDriving_, isDriving) != isDriving) {
        log_.write(isDriving ? "Corvane: the helper drives the fans"
                             : "Corvane: the firmware drives the fans");
    }
}

void FanLog::writeThermalOverride() {
    log_.write(fan_.thermalOverride() ? "Corvane: heat takes the fans beyond the floor"
                                      : "Corvane: heat asks no more of the fans than the floor");
}

}  // namespace corvane
