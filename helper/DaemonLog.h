#pragma once

#include <iterator>
#include <utility>

#include <fmt/format.h>

#include "platform/Log.h"

namespace corvane {

/// Writes one event of the helper: "Corvane daemon" and what `format` makes of the arguments. Short lines do
/// not allocate.
template <typename... Args>
void logDaemon(Log& log, fmt::format_string<Args...> format, Args&&... args) {
    fmt::memory_buffer line;
    fmt::format_to(std::back_inserter(line), "Corvane daemon");
    fmt::format_to(std::back_inserter(line), format, std::forward<Args>(args)...);
    log.write({line.data(), line.size()});
}

}  // namespace corvane
