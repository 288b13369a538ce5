#pragma once

#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace corvane {

/// A program under test in a process of its own, with an empty standard input and an environment of just
/// PATH and what is given. Killed at the end if it still runs. Not thread-safe.
class ChildProcess {
public:
    ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                 const std::map<std::string, std::string>& environment);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    void signal(int signal) const;

    /// Reads standard error until `text` has come; false when it ends, or patience does, before.
    bool waitForError(const std::string& text);

    /// Reads standard error to its end and returns the exit status; minus the signal that ended the process;
    /// -1000 when it does not end in the time a test waits.
    int wait();

    /// Standard error as far as it was read.
    [[nodiscard]] const std::string& errors() const { return errors_; }

    /// How often `text` comes in it.
    [[nodiscard]] std::size_t countErrors(const std::string& text) const;

private:
    /// False at the end, or when nothing comes in the time a test waits.
    bool readMore();

    pid_t process_;
    int errorPipe_;
    bool hasEnded_ = false;
    std::string errors_;
};

}  // namespace corvane
