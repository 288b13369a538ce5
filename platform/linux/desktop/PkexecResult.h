#pragma once

#include <string_view>

#include "platform/HelperInstaller.h"

namespace corvane {

/// What the end of `pkexec`, or of what it ran, means. `status` is its exit status; `errors` what it wrote to
/// standard error, of which one line of bounded length becomes the message of a
/// failure; `work` what it did, such as "the installation", for want of such a line.
///
/// 126: the user dismissed the prompt. 127: it was not authorized, or pkexec failed. Everything else comes
/// from the program that it ran.
[[nodiscard]] InstallResult pkexecResult(int status, std::string_view errors, std::string_view work);

}  // namespace corvane
