#pragma once

#include <memory>

#include "platform/Log.h"
#include "platform/Relauncher.h"

namespace corvane {

/// Has the system open the application's bundle anew, once this instance has ended; a program outside of a
/// bundle is started as it was. `log` outlives the relauncher.
[[nodiscard]] std::unique_ptr<Relauncher> makeMacRelauncher(Log& log);

}  // namespace corvane
