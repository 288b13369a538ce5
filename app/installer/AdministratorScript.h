#pragma once

#include <string_view>

#include "platform/AppleScript.h"
#include "platform/HelperInstaller.h"

namespace corvane {

/// What a failure is called for which the system has no words.
struct AdministratorScriptTexts {
    /// The system does not take the source for a script.
    const char* notCreated;
    const char* unknownError;
};

/// Runs a shell script as root, once an administrator has agreed to `prompt`; blocks until it has ended.
[[nodiscard]] InstallResult runAsAdministrator(AppleScript& scripting, std::string_view shellScript,
                                               std::string_view prompt,
                                               const AdministratorScriptTexts& texts);

}  // namespace corvane
