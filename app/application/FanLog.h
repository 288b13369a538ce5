#pragma once

#include <QObject>

#include "app/fan/FanController.h"
#include "platform/Log.h"

namespace corvane {

/// Writes what becomes of the fans to the log, a line per change. Main loop.
class FanLog final : public QObject {
public:
    /// Both outlive the log.
    FanLog(const FanController& fan, Log& log);

private:
    void writeInstallation();
    void writeStatusMessage();
    void writeBoost();
    void writeThermalOverride();

    const FanController& fan_;
    Log& log_;
};

}  // namespace corvane
