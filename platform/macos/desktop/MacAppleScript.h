#pragma once

#include "platform/AppleScript.h"

namespace corvane {

/// AppleScript, run within this process. Main thread.
class MacAppleScript final : public AppleScript {
public:
    [[nodiscard]] AppleScriptResult run(const std::string& source) override;
};

}  // namespace corvane
