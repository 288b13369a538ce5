#pragma once

#include "app/application/MenuBar.h"
#include "platform/AppPlatform.h"

namespace corvane {

/// Runs the application until the user or a termination signal ends it; returns the exit status. Fans that
/// are held then are handed back by the helper, which misses the application's polls.
///
/// Where this user's application runs already, that one opens its panel and this one ends at once, having
/// touched nothing; with an error and a failure status if it does not answer.
int runApplication(AppPlatform& platform, const Views& views);

}  // namespace corvane
