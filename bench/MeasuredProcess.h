#pragma once

#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace corvane {

/// A program started by this one. Ended with SIGTERM by its destructor, if not before.
class MeasuredProcess {
public:
    using Environment = std::vector<std::pair<std::string, std::string>>;

    /// Starts `command[0]`, found on the path, with `environment` set on top of this process's own. Throws
    /// std::system_error when there is no other process to be had; a program that cannot be started ends
    /// with status 127.
    explicit MeasuredProcess(std::vector<std::string> command, const Environment& environment = {});
    MeasuredProcess(const MeasuredProcess&) = delete;
    MeasuredProcess& operator=(const MeasuredProcess&) = delete;
    ~MeasuredProcess();

    [[nodiscard]] pid_t id() const { return id_; }

    /// Sends the signal and waits for the end, for 10 s; then it is killed. The exit status; -1 when a signal
    /// ended it.
    int end(int signal);

private:
    pid_t id_ = -1;
};

}  // namespace corvane
