#pragma once

#include <filesystem>
#include <string>

namespace corvane {

/// The property list that registers the helper's program with launchd, UTF-8. The service is started by the
/// first client that connects: it has no key that starts it earlier or keeps it alive.
[[nodiscard]] std::string makePlist(const std::filesystem::path& helper);

}  // namespace corvane
