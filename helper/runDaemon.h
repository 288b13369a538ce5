#pragma once

#include "platform/HelperPlatform.h"

namespace corvane {

/// The fan helper's life, from start to a termination signal: builds the service, publishes it, and releases
/// everything before it returns. Main thread. Returns the exit status: 0 after a termination signal, 1 when
/// the service cannot be published.
int runDaemon(HelperPlatform& platform);

}  // namespace corvane
