#pragma once

#include <chrono>
#include <map>
#include <string>

#include <sys/types.h>

namespace corvane {

/// How often a process called the system.
class SystemCalls {
public:
    void add(const std::string& name, double count) { counts_[name] += count; }

    /// 0 for calls that were not made.
    [[nodiscard]] double operator[](const std::string& name) const;
    [[nodiscard]] double total() const;

private:
    std::map<std::string, double> counts_;
};

/// Watches all threads of a process with strace for `duration`, and nothing is counted where that cannot be
/// done. `folder` takes a file.
[[nodiscard]] SystemCalls countSystemCalls(pid_t process, std::chrono::seconds duration,
                                           const std::string& folder);

}  // namespace corvane
