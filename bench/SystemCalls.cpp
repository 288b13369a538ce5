#include "bench/SystemCalls.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "bench/MeasuredProcess.h"

namespace corvane {

double SystemCalls::operator[](const std::string& name) const {
    const auto found = counts_.find(name);
    return found == counts_.end() ? 0.0 : found->second;
}

double SystemCalls::total() const {
    double sum = 0;
    for (const auto& [name, count] : counts_) {
        sum += count;
    }
    return sum;
}

SystemCalls countSystemCalls(pid_t process, std::chrono::seconds duration, const std::string& folder) {
    const std::string file = folder + "/system-calls";
    MeasuredProcess strace({"strace", "--follow-forks", "--summary-only", "--summary-columns=calls,name",
                            "--output=" + file, "--attach=" + std::to_string(process)});
    std::this_thread::sleep_for(duration);
    strace.end(SIGINT);

    SystemCalls calls;
    std::ifstream table(file);
    for (std::string line; std::getline(table, line);) {
        const std::size_t nameEnd = line.find_last_not_of(' ') + 1;
        const std::size_t nameStart = line.find_last_of(' ', nameEnd - 1) + 1;
        const std::string name = line.substr(nameStart, nameEnd - nameStart);
        const double count = std::strtod(line.c_str(), nullptr);
        // Headings have no count; the last line is the sum.
        if (count > 0 && name != "total") {
            calls.add(name, count);
        }
    }
    return calls;
}

}  // namespace corvane
