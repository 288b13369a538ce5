#pragma once

#include "platform/Log.h"

namespace corvane {

/// One line per event on standard error, which the journal collects for a service.
class StderrLog final : public Log {
public:
    void write(std::string_view line) noexcept override;
};

}  // namespace corvane
