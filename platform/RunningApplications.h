#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>

#include "platform/Observation.h"

namespace corvane {

/// The applications that run in the user's session. Belongs to the main loop and does not block it.
class RunningApplications {
public:
    /// What identifies an application from one start to the next: a bundle identifier on a Mac, the desktop
    /// file's id without ".desktop" on Linux.
    using Identifiers = std::set<std::string>;

    RunningApplications() = default;
    RunningApplications(const RunningApplications&) = delete;
    RunningApplications& operator=(const RunningApplications&) = delete;
    virtual ~RunningApplications() = default;

    /// As they are now; an application without an identifier is left out. Empty when the system does not
    /// tell.
    [[nodiscard]] virtual Identifiers identifiers() const = 0;

    /// Runs `changed` on the main loop after an application started or quit. Where the system does not tell,
    /// it never runs. The applications outlive the observation.
    [[nodiscard]] virtual std::unique_ptr<Observation> observe(std::function<void()> changed) = 0;
};

}  // namespace corvane
