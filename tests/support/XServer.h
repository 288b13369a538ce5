#pragma once

#include <csignal>
#include <optional>
#include <string>

#include <fmt/format.h>

#include "tests/support/ChildProcess.h"

namespace corvane {

/// An X server of a test's own, without a screen to look at. Not thread-safe.
class XServer {
public:
    /// Starts it and waits until it can be reached. Check `problem` afterwards. With the `options` that are
    /// there it goes on as it is when its last client has left.
    explicit XServer(const std::string& options = "-noreset")
        : process_("/bin/sh", {"-c", "exec Xvfb -displayfd 3 -nolisten tcp " + options + " 3>&2 2>/dev/null"},
                   {}) {
        if (process_.waitForError("\n")) {
            display_ = fmt::format(":{}", process_.errors().substr(0, process_.errors().find('\n')));
        } else {
            problem_ = "Xvfb is not installed or does not start";
        }
    }

    /// Why there is no server, or nothing.
    [[nodiscard]] const std::optional<std::string>& problem() const { return problem_; }

    /// As in $DISPLAY.
    [[nodiscard]] const std::string& display() const { return display_; }

    /// Ends it, and with it every connection.
    void end() {
        process_.signal(SIGKILL);
        process_.wait();
    }

private:
    /// Its number is all it says.
    ChildProcess process_;
    std::string display_;
    std::optional<std::string> problem_;
};

}  // namespace corvane
