#include "platform/linux/desktop/QtTimers.h"

#include <unistd.h>

#include "platform/linux/TimerDescriptor.h"

namespace corvane {

class QtTimers::QtTimer final : public Timer {
public:
    QtTimer(QtTimers& timers, Instant due, Duration period, SerialQueue::Work work)
        : timers_(timers),
          deadline_(due, timers.timersMade_++),
          period_(period),
          work_(std::make_shared<const SerialQueue::Work>(std::move(work))) {
        timers_.timers_.emplace(deadline_, this);
        timers_.setAlarm();
    }
    QtTimer(const QtTimer&) = delete;
    QtTimer& operator=(const QtTimer&) = delete;
    ~QtTimer() override {
        timers_.timers_.erase(deadline_);
        timers_.setAlarm();
    }

    /// Sees to the next run, if there is one, and runs the work, which may destroy the timer.
    void run(Instant now) {
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
    QtTimers& timers_;
    Deadline deadline_;
    Duration period_;
    std::shared_ptr<const SerialQueue::Work> work_;
};

QtTimers::QtTimers(clockid_t clock, Now now)
    : now_(std::move(now)), alarm_(makeTimerDescriptor(clock), [this] { runDue(); }) {}

std::unique_ptr<Timer> QtTimers::add(Instant due, Duration period, SerialQueue::Work work) {
    return std::make_unique<QtTimer>(*this, due, period, std::move(work));
}

void QtTimers::runDue() {
    std::uint64_t expiries = 0;
    [[maybe_unused]] const ssize_t size = read(alarm_.get(), &expiries, sizeof expiries);
    // Timers that become due as time passes meanwhile wait for the next round, so that other work gets its
    // turn.
    const Instant now = now_();
    while (!timers_.empty() && timers_.begin()->first.first <= now) {
        timers_.begin()->second->run(now);
    }
    setAlarm();
}

void QtTimers::setAlarm() {
    if (timers_.empty()) {
        stopTimerDescriptor(alarm_.get());
    } else {
        setTimerDescriptor(alarm_.get(), timers_.begin()->first.first);
    }
}

}  // namespace corvane
