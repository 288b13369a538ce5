#pragma once

#include <functional>

namespace corvane {

/// Tells when the computer has come back from a suspend. Belongs to the main loop.
class ResumeObserver {
public:
    ResumeObserver() = default;
    ResumeObserver(const ResumeObserver&) = delete;
    ResumeObserver& operator=(const ResumeObserver&) = delete;
    virtual ~ResumeObserver() = default;

    /// Runs `afterResume` on the main loop each time. Called once. Where the system does not tell, it never
    /// runs.
    virtual void observe(std::function<void()> afterResume) = 0;
};

}  // namespace corvane
