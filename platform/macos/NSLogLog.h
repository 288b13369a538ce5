#pragma once

#include "platform/Log.h"

namespace corvane {

/// One line per event in the system's log and on standard error, which launchd collects for the helper.
class NSLogLog final : public Log {
public:
    void write(std::string_view line) noexcept override;
};

}  // namespace corvane
