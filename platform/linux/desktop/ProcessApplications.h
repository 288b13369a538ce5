#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include <sys/types.h>

#include "platform/RunningApplications.h"
#include "platform/linux/desktop/DesktopFiles.h"

namespace corvane {

/// Finds out from the user's own processes which applications run. One thread; waits for the disk, and as
/// long as processes take to tell of themselves.
///
/// Which application a process belongs to is told, in this order, by its control group, by the sandbox it is
/// in, by its environment when it is the very process that a desktop started, and by the application whose
/// program it runs. Processes of others, and those that cannot be read, are passed over.
class ProcessApplications {
public:
    using Identifiers = RunningApplications::Identifiers;

    /// `root` is where the processes are, an absolute path.
    explicit ProcessApplications(DesktopFiles files, std::string root = "/proc")
        : files_(std::move(files)), root_(std::move(root)) {}

    /// Looks at a bounded number of processes. A process that was looked at twice, and found the same, costs
    /// two system calls from then on, until it runs another program.
    [[nodiscard]] Identifiers scan();

private:
    struct Process {
        /// These tell a process from a later one with the same number.
        ino_t inode = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        /// The path of the program it runs.
        std::string program;

        bool operator==(const Process&) const = default;
    };
    struct Known {
        Process process;
        std::optional<std::string> identifier;
        /// A process is seen before its launcher has put it into its control group, too.
        bool isSettled = false;
        std::uint64_t scan = 0;
    };

    [[nodiscard]] static std::optional<Process> look(int rootDescriptor, const char* number);
    void examine(const std::string& number, const Process& process);
    [[nodiscard]] std::optional<std::string> identify(const std::string& number,
                                                      const Process& process) const;
    [[nodiscard]] std::optional<std::string> byProgram(const std::string& folder,
                                                       const Process& process) const;

    DesktopFiles files_;
    std::string root_;
    std::uint64_t scans_ = 0;
    /// By number.
    std::map<std::string, Known, std::less<>> known_;
};

}  // namespace corvane
