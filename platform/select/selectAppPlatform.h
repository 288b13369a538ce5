#pragma once

#include <memory>

#include "platform/AppPlatform.h"
#include "platform/select/PlatformOptions.h"

namespace corvane {

/// The one place that picks a platform for the application. Called after the toolkit's application object was
/// made.
std::unique_ptr<AppPlatform> selectAppPlatform(const PlatformOptions& options);

}  // namespace corvane
