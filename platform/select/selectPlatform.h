#pragma once

#include <memory>

#include "platform/CommandPlatform.h"
#include "platform/HelperPlatform.h"
#include "platform/select/PlatformOptions.h"

namespace corvane {

/// The one place that picks a platform.
std::unique_ptr<HelperPlatform> selectHelperPlatform(const PlatformOptions& options);
std::unique_ptr<CommandPlatform> selectCommandPlatform(const PlatformOptions& options);

}  // namespace corvane
