#include "app/application/FanLog.h"

#include <fmt/format.h>

namespace corvane {

FanLog::FanLog(const FanController& fan, Log& log) : fan_(fan), log_(log) {
    connect(&fan, &FanController::helperInstalledChanged, this, &FanLog::writeInstallation);
    connect(&fan, &FanController::helperNeedsUpdateChanged, this, &FanLog::writeInstallation);
    connect(&fan, &FanController::statusMessageChanged, this, &FanLog::writeStatusMessage);
    connect(&fan, &FanController::isBoostedChanged, this, &FanLog::writeBoost);
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

void FanLog::writeStatusMessage() {
    if (!fan_.statusMessage().isEmpty()) {
        log_.write(fmt::format("Corvane: {}", fan_.statusMessage().toStdString()));
    }
}

void FanLog::writeBoost() {
    if (!fan_.isBoosted()) {
        log_.write("Corvane: fans left to the firmware");
    } else if (fan_.targetPercent() > 0) {
        log_.write(fmt::format("Corvane: fans held at {:.0f} % at least", fan_.targetPercent()));
    } else {
        log_.write("Corvane: fans held by the helper, though not for this application");
    }
}

void FanLog::writeThermalOverride() {
    if (fan_.thermalOverride()) {
        log_.write(fmt::format("Corvane: heat takes the fans to {:.0f} %", fan_.effectivePercent()));
    } else {
        log_.write("Corvane: heat asks no more of the fans than the floor");
    }
}

}  // namespace corvane
