#pragma once

#include <string_view>

namespace corvane {

/// Where the process reports its events: one English line per event, without line end.
///
/// Any thread. Never throws and never fails visibly: a line that cannot be written is dropped.
class Log {
public:
    Log() = default;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    virtual ~Log() = default;

    virtual void write(std::string_view line) noexcept = 0;
};

}  // namespace corvane
