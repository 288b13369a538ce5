#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/SmcConnection.h"

namespace corvane {

/// A simulated Mac with a connection to its SMC, for composition roots. `clock` is the machine's time.
/// `scenarioPath` names its control file, empty for none; the file is looked at while the connection is used
/// and need not exist. `log` outlives the connection.
std::unique_ptr<SmcConnection> makeSimulatedSmc(std::function<BootTime()> clock,
                                                const std::string& scenarioPath, Log& log);

}  // namespace corvane
