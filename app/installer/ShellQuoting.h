#pragma once

#include <filesystem>
#include <string>

namespace corvane {

/// A path as one word of a shell script, whatever it holds: in single quotes, each single quote inside
/// written as
/// '"'"' (close the quoting, a single quote in double ones, reopen).
[[nodiscard]] std::string shellQuoted(const std::filesystem::path& path);

}  // namespace corvane
