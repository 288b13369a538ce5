#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Lifetime.h"
#include "platform/Observers.h"
#include "platform/RunningApplications.h"
#include "platform/SerialQueue.h"
#include "platform/linux/desktop/ApplicationUnits.h"
#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/EnvironmentLookup.h"
#include "platform/linux/desktop/ProcessApplications.h"

namespace corvane {

/// The applications of the user's session, as the user's service manager tells and as the user's processes
/// show. Main loop.
///
/// What the manager starts and ends is announced at once. Processes are looked at in the background, each
/// time somebody asks and after news of the manager: a process in trouble may hold up whoever looks at it,
/// and disks are slow. So asking only copies what is known, and what a look finds out in addition is
/// announced a moment later; who asks every few seconds knows of everything in that time. Nothing is known at
/// the very beginning, nor of processes `longestTrust` after the last look began or ended: the look is stuck,
/// or nobody has asked since, and what was seen may have ended long ago.
class SessionApplications final : public RunningApplications {
public:
    static constexpr Duration longestTrust = std::chrono::seconds(10);

    /// What a look at the processes does, in the background, for as long as it takes.
    using Look = std::function<Identifiers(ProcessApplications& processes)>;

    /// Where the applications are looked for.
    struct Sources {
        std::string processes = "/proc";
        UserManagerPatience patience = {};
        Look look = [](ProcessApplications& found) { return found.scan(); };
    };

    /// `bus` and `mainLoop` outlive the applications; the environment is looked into now.
    SessionApplications(BusThread& bus, SerialQueue& mainLoop, const EnvironmentLookup& environment,
                        Sources sources);
    SessionApplications(BusThread& bus, SerialQueue& mainLoop, const EnvironmentLookup& environment)
        : SessionApplications(bus, mainLoop, environment, Sources()) {}
    ~SessionApplications() override;

    [[nodiscard]] Identifiers identifiers() const override;
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override;

private:
    class Looker;

    void setUnits(std::optional<Identifiers> units);
    void setProcesses(Identifiers processes);
    void announceChange();

    BusThread& bus_;
    Observers observers_;
    /// Empty while the manager does not tell.
    Identifiers units_;
    Identifiers processes_;
    /// Both.
    Identifiers known_;
    /// Belongs to the bus thread.
    std::shared_ptr<ApplicationUnits> client_;
    std::unique_ptr<Looker> looker_;
    Lifetime lifetime_;
};

}  // namespace corvane
