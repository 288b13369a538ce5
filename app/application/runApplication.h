#pragma once

#include "platform/AppPlatform.h"

namespace corvane {

/// Runs the application until a termination signal ends it; returns the exit status. Fans that are held then
/// are handed back by the helper, which misses the application's polls.
int runApplication(AppPlatform& platform);

}  // namespace corvane
