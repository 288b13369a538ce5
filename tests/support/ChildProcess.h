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

    /// Reads what it writes to the end and returns the exit status; minus the signal that ended the process;
    /// -1000 when it does not end in the time a test waits.
    int wait();

    /// Standard output as far as it was read.
    [[nodiscard]] const std::string& output() const { return output_.text; }

    /// Standard error as far as it was read.
    [[nodiscard]] const std::string& errors() const { return errors_.text; }

    /// How often `text` comes in it.
    [[nodiscard]] std::size_t countErrors(const std::string& text) const;

private:
    /// What the process writes to one of its descriptors.
    struct Stream {
        /// The pipe's end that is read; -1 once it has ended.
        int pipe = -1;
        std::string text;

        void read();
    };

    /// False at the end of both streams, or when nothing comes in the time a test waits.
    bool readMore();
    [[nodiscard]] bool hasEnded() const { return output_.pipe < 0 && errors_.pipe < 0; }

    pid_t process_ = -1;
    Stream output_;
    Stream errors_;
};

}  // namespace corvane
