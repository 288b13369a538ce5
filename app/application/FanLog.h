#pragma once

#include <QObject>

#include "app/fan/FanController.h"
#include "platform/Log.h"

namespace corvane {

/// Writes what becomes of the fans to the log, a line per change, as the helper reports it. Main loop.
class FanLog final : public QObject {
public:
    /// Both outlive the log.
    FanLog(const FanController& fan, Log& log);

private:
    void writeInstallation();
    void writeDriver();
    void writeThermalOverride();

    const FanController& fan_;
    Log& log_;
    bool isHelperDriving_ = false;
};

}  // namespace corvane
