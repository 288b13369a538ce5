#include "platform/linux/desktop/QtSerialQueue.h"

#include <future>
#include <memory>
#include <thread>

#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include "platform/linux/LinuxClock.h"

namespace corvane {

namespace {

timespec toTimespec(BootTime time) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch());
    return {seconds.count(), (time.time_since_epoch() - seconds).count()};
}

/// Empties an eventfd or timerfd.
void drain(const QtDescriptor& descriptor) {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t size = read(descriptor.get(), &count, sizeof count);
}

}  // namespace

class QtSerialQueue::QtTimer final : public Timer {
public:
    /// `period` zero: runs once.
    QtTimer(QtSerialQueue& queue, BootTime due, Duration period, Work work)
        : queue_(queue),
          deadline_(due, queue.timersMade_++),
          period_(period),
          work_(std::make_shared<const Work>(std::move(work))) {
        queue_.timers_.emplace(deadline_, this);
        queue_.setAlarm();
    }
    QtTimer(const QtTimer&) = delete;
    QtTimer& operator=(const QtTimer&) = delete;
    ~QtTimer() override {
        queue_.timers_.erase(deadline_);
        queue_.setAlarm();
    }

    /// Sees to the next run, if there is one, and runs the work, which may destroy the timer.
    void run(BootTime now) {
        auto self = queue_.timers_.extract(deadline_);
        if (period_ > Duration::zero()) {
            deadline_.first += period_ * ((now - deadline_.first) / period_ + 1);
            self.key() = deadline_;
            queue_.timers_.insert(std::move(self));
        }
        const std::shared_ptr<const Work> work = work_;
        (*work)();
    }

private:
    QtSerialQueue& queue_;
    Deadline deadline_;
    Duration period_;
    std::shared_ptr<const Work> work_;
};

QtSerialQueue::QtSerialQueue()
    : wakeUp_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC), [this] { runNext(); }),
      alarm_(timerfd_create(CLOCK_BOOTTIME, TFD_NONBLOCK | TFD_CLOEXEC), [this] { runDueTimers(); }) {}

QtSerialQueue::~QtSerialQueue() = default;

void QtSerialQueue::async(Work work) {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
    eventfd_write(wakeUp_.get(), 1);
}

void QtSerialQueue::sync(const Work& work) {
    std::promise<void> done;
    async([&] {
        work();
        done.set_value();
    });
    done.get_future().wait();
}

void QtSerialQueue::syncAhead(const Work& work) {
    std::promise<void> done;
    {
        const std::lock_guard lock(mutex_);
        ahead_.emplace_back([&] {
            work();
            done.set_value();
        });
        eventfd_write(wakeUp_.get(), 1);
    }
    done.get_future().wait();
}

/// Runs one piece of work. While more waits the event loop comes back, and looks at everything else between.
void QtSerialQueue::runNext() {
    Work next;
    {
        const std::lock_guard lock(mutex_);
        std::deque<Work>& source = ahead_.empty() ? waiting_ : ahead_;
        if (source.empty()) {
            return;
        }
        next = std::move(source.front());
        source.pop_front();
        if (ahead_.empty() && waiting_.empty()) {
            drain(wakeUp_);
        }
    }
    next();
}

void QtSerialQueue::runDueTimers() {
    drain(alarm_);
    // Timers that become due meanwhile wait for the next round, so that other work gets its turn.
    const BootTime now = bootTime();
    while (!timers_.empty() && timers_.begin()->first.first <= now) {
        timers_.begin()->second->run(now);
    }
    setAlarm();
}

void QtSerialQueue::setAlarm() {
    itimerspec alarm{};
    if (!timers_.empty()) {
        alarm.it_value = toTimespec(timers_.begin()->first.first);
    }
    timerfd_settime(alarm_.get(), TFD_TIMER_ABSTIME, &alarm, nullptr);
}

std::unique_ptr<Timer> QtSerialQueue::after(Duration delay, Work work) {
    return std::make_unique<QtTimer>(*this, bootTime() + delay, Duration::zero(), std::move(work));
}

std::unique_ptr<Timer> QtSerialQueue::every(Duration first, Duration period, Work work) {
    return std::make_unique<QtTimer>(*this, bootTime() + first, period, std::move(work));
}

void QtSerialQueue::sleep(Duration duration) {
    std::this_thread::sleep_for(duration);
}

BootTime QtSerialQueue::bootTime() const {
    return linuxBootTime();
}

WallTime QtSerialQueue::wallTime() const {
    return linuxWallTime();
}

}  // namespace corvane
