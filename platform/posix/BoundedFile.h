#pragma once

#include <cstddef>
#include <string>

namespace corvane {

/// What a file holds, at most its first `limit` bytes; empty when it cannot be read or is no ordinary file.
/// Other people's files may be anything: it does not wait for a pipe's other end, nor follow where it ends.
[[nodiscard]] std::string readAtMost(const std::string& path, std::size_t limit);

}  // namespace corvane
