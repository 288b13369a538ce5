#include "platform/linux/desktop/QtSerialQueue.h"

#include <future>
#include <thread>

#include <sys/eventfd.h>

#include "platform/linux/LinuxClock.h"

namespace corvane {

namespace {

Duration sinceBoot() {
    return linuxBootTime().time_since_epoch();
}

Duration onCalendar() {
    return linuxWallTime().time_since_epoch();
}

}  // namespace

QtSerialQueue::QtSerialQueue()
    : wakeUp_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC), [this] { runNext(); }),
      bootTimers_(CLOCK_BOOTTIME, sinceBoot),
      calendarTimers_(CLOCK_REALTIME, onCalendar) {}

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
            eventfd_t count = 0;
            eventfd_read(wakeUp_.get(), &count);
        }
    }
    next();
}

std::unique_ptr<Timer> QtSerialQueue::after(Duration delay, Work work) {
    return bootTimers_.add(sinceBoot() + delay, Duration::zero(), std::move(work));
}

std::unique_ptr<Timer> QtSerialQueue::at(WallTime time, Work work) {
    return calendarTimers_.add(time.time_since_epoch(), Duration::zero(), std::move(work));
}

std::unique_ptr<Timer> QtSerialQueue::every(Duration first, Duration period, Work work) {
    return bootTimers_.add(sinceBoot() + first, period, std::move(work));
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
