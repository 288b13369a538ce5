#pragma once

#include <optional>
#include <string>

namespace corvane {

/// How the run of an AppleScript ended.
struct AppleScriptResult {
    enum class Outcome {
        success,
        /// The system does not take the source for a script; nothing was run.
        notCreated,
        failure,
    };
    /// The number of a failure that is the user dismissing a dialog.
    static constexpr int userCancelled = -128;

    Outcome outcome = Outcome::success;
    /// Only with `failure`.
    int number = 0;
    /// Only with `failure`, in the system's words, if it has any.
    std::optional<std::string> message = std::nullopt;
};

/// The system's own scripting. Main thread.
class AppleScript {
public:
    AppleScript() = default;
    AppleScript(const AppleScript&) = delete;
    AppleScript& operator=(const AppleScript&) = delete;
    virtual ~AppleScript() = default;

    /// Runs a source (UTF-8) to its end, dialogs included: blocks for as long as the user takes.
    [[nodiscard]] virtual AppleScriptResult run(const std::string& source) = 0;
};

}  // namespace corvane
