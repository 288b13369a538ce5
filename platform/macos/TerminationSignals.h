#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace corvane {

/// Dispatch's notice of the termination signals, on the main queue. Main thread.
class TerminationSignals {
public:
    /// Runs `handler` for each that arrives from now on, and for each that waits, which takes that they have
    /// been blocked so far. From then on the process ignores them.
    explicit TerminationSignals(std::function<void()> handler);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

private:
    class Source;

    std::function<void()> handler_;
    std::vector<std::unique_ptr<Source>> sources_;
};

}  // namespace corvane
