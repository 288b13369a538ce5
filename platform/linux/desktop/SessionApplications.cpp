#include "platform/linux/desktop/SessionApplications.h"

#include <utility>

#include "platform/MainLoopExit.h"
#include "platform/linux/desktop/BackgroundWorkers.h"
#include "platform/linux/desktop/DesktopFiles.h"

namespace corvane {

/// Looks at the processes in the background, one time after the other. A look may get stuck at a process in
/// trouble; then nothing is known of processes until it comes back, and neither when none has begun for as
/// long. Main loop.
class SessionApplications::Looker {
public:
    /// `found` runs on the main loop after each look, and with nothing once that is too long ago, unless the
    /// looker is gone.
    Looker(SerialQueue& mainLoop, ProcessApplications processes, Look look,
           std::function<void(Identifiers)> found)
        : mainLoop_(mainLoop),
          found_(std::move(found)),
          look_(std::make_shared<const Look>(std::move(look))),
          processes_(std::make_shared<ProcessApplications>(std::move(processes))),
          exit_(std::make_shared<MainLoopExit>(mainLoop)) {}
    Looker(const Looker&) = delete;
    Looker& operator=(const Looker&) = delete;
    ~Looker() { exit_->close(); }

    /// Looks as soon as possible; after a look under way, which may have seen what is no more, once more.
    void lookSoon() {
        isOutdated_ = isLooking_;
        if (isLooking_ || !begin()) {
            return;
        }
        isLooking_ = true;
        trustForAWhile();
    }

private:
    void trustForAWhile() {
        trust_ = mainLoop_.after(longestTrust, [this] { found_({}); });
    }

    /// False when the system has no thread to spare; who asks next begins.
    bool begin() {
        return workers_.post([look = look_, processes = processes_, exit = exit_,
                              tell = lifetime_.bound([this](Identifiers found) { end(std::move(found)); })] {
            exit->toMainLoop([tell, found = (*look)(*processes)]() mutable { tell(std::move(found)); });
        });
    }

    void end(Identifiers found) {
        isLooking_ = false;
        trustForAWhile();
        if (std::exchange(isOutdated_, false)) {
            lookSoon();
        }
        found_(std::move(found));
    }

    SerialQueue& mainLoop_;
    std::function<void(Identifiers)> found_;
    bool isLooking_ = false;
    bool isOutdated_ = false;
    std::shared_ptr<const Look> look_;
    /// Belongs to the look under way.
    std::shared_ptr<ProcessApplications> processes_;
    std::shared_ptr<MainLoopExit> exit_;
    BackgroundWorkers workers_;
    std::unique_ptr<Timer> trust_;
    Lifetime lifetime_;
};

SessionApplications::SessionApplications(BusThread& bus, SerialQueue& mainLoop,
                                         const EnvironmentLookup& environment, Sources sources)
    : bus_(bus),
      looker_(std::make_unique<Looker>(
          mainLoop,
          ProcessApplications(DesktopFiles(desktopFileFolders(environment)), std::move(sources.processes)),
          std::move(sources.look), [this](Identifiers processes) { setProcesses(std::move(processes)); })) {
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
