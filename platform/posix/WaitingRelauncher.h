#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Log.h"
#include "platform/Relauncher.h"
#include "platform/posix/FileDescriptor.h"

namespace corvane {

/// Leaves a process behind that waits for the end of this one, whichever way that ends, and then becomes what
/// starts the application. What this one has let go of in an orderly end is free by then; when it is killed,
/// the system may still be closing its files and connections, so that whoever needs one of them tries for a
/// while. Main loop.
class WaitingRelauncher final : public Relauncher {
public:
    /// `command` is the path of a program and its arguments, if any. `environment` is what it gets, as this
    /// process has its own, and `log`; both outlive the relauncher.
    WaitingRelauncher(std::vector<std::string> command, char* const* environment, Log& log)
        : command_(std::move(command)), environment_(environment), log_(log) {}

    void relaunch() override;

private:
    [[nodiscard]] std::optional<std::string> startWaiting(const FileDescriptor& input);

    std::vector<std::string> command_;
    char* const* environment_;
    Log& log_;
};

}  // namespace corvane
