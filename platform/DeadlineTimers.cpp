#include "platform/DeadlineTimers.h"

namespace corvane {

class DeadlineTimers::DeadlineTimer final : public Timer {
public:
    DeadlineTimer(DeadlineTimers& timers, Duration due, Duration period, SerialQueue::Work work)
        : timers_(timers),
          deadline_(due, timers.timersMade_++),
          period_(period),
          work_(std::make_shared<const SerialQueue::Work>(std::move(work))) {
        timers_.timers_.emplace(deadline_, this);
        timers_.setAlarm();
    }
    DeadlineTimer(const DeadlineTimer&) = delete;
    DeadlineTimer& operator=(const DeadlineTimer&) = delete;
    ~DeadlineTimer() override {
        timers_.timers_.erase(deadline_);
        timers_.setAlarm();
    }

    /// Sees to the next run, if there is one, and runs the work, which may destroy the timer.
    void run(Duration now) {
        auto self = timers_.timers_.extract(deadline_);
        if (period_ > Duration::zero()) {
            deadline_.first += period_ * ((now - deadline_.first) / period_ + 1);
            self.key() = deadline_;
            timers_.timers_.insert(std::move(self));
        }
        const std::shared_ptr<const SerialQueue::Work> work = work_;
        (*work)();
    }

private:
    DeadlineTimers& timers_;
    Deadline deadline_;
    Duration period_;
    std::shared_ptr<const SerialQueue::Work> work_;
};

std::unique_ptr<Timer> DeadlineTimers::add(Duration due, Duration period, SerialQueue::Work work) {
    return std::make_unique<DeadlineTimer>(*this, due, period, std::move(work));
}

void DeadlineTimers::runDue() {
    // Timers that become due as time passes meanwhile wait for the next round, so that other work gets its
    // turn.
    const Duration now = alarm_.now();
    while (!timers_.empty() && timers_.begin()->first.first <= now) {
        timers_.begin()->second->run(now);
    }
    setAlarm();
}

void DeadlineTimers::setAlarm() {
    if (timers_.empty()) {
        alarm_.stop();
    } else {
        alarm_.set(timers_.begin()->first.first);
    }
}

}  // namespace corvane
