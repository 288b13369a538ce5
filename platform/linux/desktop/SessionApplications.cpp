#include "platform/linux/desktop/SessionApplications.h"

#include <utility>

#include "platform/linux/desktop/DesktopFiles.h"
#include "platform/linux/desktop/ProcessApplications.h"

namespace corvane {

/// Looks at the processes on a thread of its own, one time after the other. Main loop.
class SessionApplications::Looker {
public:
    /// `found` runs on the main loop after each look, unless the looker is gone.
    Looker(SerialQueue& mainLoop, ProcessApplications processes, std::function<void(Identifiers)> found)
        : mainLoop_(mainLoop), found_(std::move(found)), processes_(std::move(processes)) {}

    /// Looks as soon as possible; once, however often it was asked to before it got to it.
    void lookSoon() {
        if (std::exchange(isLooking_, true)) {
            return;
        }
        thread_.post([this, tell = lifetime_.bound([this](Identifiers found) {
            isLooking_ = false;
            found_(std::move(found));
        })] { mainLoop_.async([tell, found = processes_.scan()]() mutable { tell(std::move(found)); }); });
    }

private:
    SerialQueue& mainLoop_;
    std::function<void(Identifiers)> found_;
    bool isLooking_ = false;
    /// Belongs to the thread.
    ProcessApplications processes_;
    BusThread thread_{"processes"};
    Lifetime lifetime_;
};

SessionApplications::SessionApplications(BusThread& bus, SerialQueue& mainLoop,
                                         const EnvironmentLookup& environment, Sources sources)
    : bus_(bus),
      looker_(std::make_unique<Looker>(
          mainLoop,
          ProcessApplications(DesktopFiles(desktopFileFolders(environment)), std::move(sources.processes)),
          [this](Identifiers processes) { setProcesses(std::move(processes)); })) {
    auto publish = [&mainLoop, set = lifetime_.bound([this](std::optional<Identifiers> units) {
        setUnits(std::move(units));
    })](std::optional<Identifiers> units) {
        mainLoop.async([set, units = std::move(units)]() mutable { set(std::move(units)); });
    };
    client_ = std::make_shared<ApplicationUnits>(bus.context(), UserBus(environment), sources.patience,
                                                 std::move(publish));
    bus_.post([client = client_] { client->start(); });
    looker_->lookSoon();
}

SessionApplications::~SessionApplications() {
    bus_.post([client = std::move(client_)] {});
}

SessionApplications::Identifiers SessionApplications::identifiers() const {
    looker_->lookSoon();
    return known_;
}

std::unique_ptr<Observation> SessionApplications::observe(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

void SessionApplications::setUnits(std::optional<Identifiers> units) {
    units_ = std::move(units).value_or(Identifiers());
    announceChange();
    // What has ended for the manager has processes in what was last seen.
    looker_->lookSoon();
}

void SessionApplications::setProcesses(Identifiers processes) {
    processes_ = std::move(processes);
    announceChange();
}

void SessionApplications::announceChange() {
    Identifiers all = units_;
    all.insert(processes_.begin(), processes_.end());
    if (std::exchange(known_, all) != all) {
        observers_.notify();
    }
}

}  // namespace corvane
