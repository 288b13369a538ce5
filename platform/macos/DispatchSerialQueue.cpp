#include "platform/macos/DispatchSerialQueue.h"

#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include <dispatch/dispatch.h>

#include "platform/DeadlineTimers.h"
#include "platform/macos/AutoreleasePool.h"
#include "platform/macos/DispatchAlarms.h"
#include "platform/macos/MacClock.h"

namespace corvane {

namespace {

/// The timers on one clock and what wakes the queue up for them.
template <typename ClockAlarm>
struct ClockTimers {
    explicit ClockTimers(dispatch_queue_t queue) : alarm(queue, this, runDue), timers(alarm) {}

    static void runDue(void* self) {
        const AutoreleasePool pool;
        static_cast<ClockTimers*>(self)->timers.runDue();
    }

    ClockAlarm alarm;
    DeadlineTimers timers;
};

}  // namespace

class DispatchSerialQueue::Core : public std::enable_shared_from_this<Core> {
public:
    /// Takes `queue` over unless it is the main thread's.
    explicit Core(dispatch_queue_t queue) : queue_(queue) {
        bootTimers.emplace(queue);
        calendarTimers.emplace(queue);
    }
    Core(const Core&) = delete;
    Core& operator=(const Core&) = delete;
    ~Core() {
        if (!isMainThreads()) {
            dispatch_release(queue_);
        }
    }

    void async(Work work) {
        const std::lock_guard lock(mutex_);
        if (hasEnded_) {
            return;
        }
        waiting_.push_back(std::move(work));
        if (waiting_.size() == 1) {
            callForNext();
        }
    }

    void syncAhead(const Work& work) {
        dispatch_sync_f(queue_, const_cast<Work*>(&work),
                        [](void* given) { (*static_cast<Work*>(given))(); });
    }

    /// Nothing runs any more after this.
    void end() {
        dropWaiting();
        if (isMainThreads()) {
            endTimers();
        } else {
            dispatch_sync_f(queue_, this, [](void* self) { static_cast<Core*>(self)->endTimers(); });
        }
    }

    std::optional<ClockTimers<BootAlarm>> bootTimers;
    std::optional<ClockTimers<CalendarAlarm>> calendarTimers;

private:
    [[nodiscard]] bool isMainThreads() const { return queue_ == dispatch_get_main_queue(); }

    void callForNext() {
        dispatch_async_f(queue_, new std::shared_ptr(shared_from_this()), [](void* given) {
            const std::unique_ptr<std::shared_ptr<Core>> core(static_cast<std::shared_ptr<Core>*>(given));
            (*core)->runNext();
        });
    }

    /// Runs one piece of work and comes back for the next by way of Dispatch.
    void runNext() {
        const AutoreleasePool pool;
        Work next;
        {
            const std::lock_guard lock(mutex_);
            if (waiting_.empty()) {
                return;
            }
            next = std::move(waiting_.front());
        }
        next();
        // What the work held goes before the lock is taken: it may hand over more.
        next = nullptr;
        const std::lock_guard lock(mutex_);
        if (!waiting_.empty()) {
            waiting_.pop_front();
        }
        if (!waiting_.empty()) {
            callForNext();
        }
    }

    void dropWaiting() {
        // Goes after the lock: what it holds may hand over more, which is dropped, too.
        std::deque<Work> dropped;
        const std::lock_guard lock(mutex_);
        hasEnded_ = true;
        dropped.swap(waiting_);
    }

    void endTimers() {
        bootTimers.reset();
        calendarTimers.reset();
    }

    dispatch_queue_t queue_;
    std::mutex mutex_;
    std::deque<Work> waiting_;
    bool hasEnded_ = false;
};

DispatchSerialQueue::DispatchSerialQueue(std::string_view label)
    : core_(
          std::make_shared<Core>(dispatch_queue_create(std::string(label).c_str(), DISPATCH_QUEUE_SERIAL))) {}

DispatchSerialQueue::DispatchSerialQueue(OfMainThread /*mainThread*/)
    : core_(std::make_shared<Core>(dispatch_get_main_queue())) {}

DispatchSerialQueue::~DispatchSerialQueue() {
    core_->end();
}

void DispatchSerialQueue::async(Work work) {
    core_->async(std::move(work));
}

void DispatchSerialQueue::sync(const Work& work) {
    bool isDone = false;
    core_->async([&] {
        work();
        isDone = true;
    });
    // Each time Dispatch has run at least one more of the pieces that wait before it.
    while (!isDone) {
        core_->syncAhead([] {});
    }
}

void DispatchSerialQueue::syncAhead(const Work& work) {
    core_->syncAhead(work);
}

std::unique_ptr<Timer> DispatchSerialQueue::after(Duration delay, Work work) {
    return core_->bootTimers->timers.add((bootTime() + delay).time_since_epoch(), Duration::zero(),
                                         std::move(work));
}

std::unique_ptr<Timer> DispatchSerialQueue::at(WallTime time, Work work) {
    return core_->calendarTimers->timers.add(time.time_since_epoch(), Duration::zero(), std::move(work));
}

std::unique_ptr<Timer> DispatchSerialQueue::every(Duration first, Duration period, Work work) {
    return core_->bootTimers->timers.add((bootTime() + first).time_since_epoch(), period, std::move(work));
}

void DispatchSerialQueue::sleep(Duration duration) {
    macSleep(duration);
}

BootTime DispatchSerialQueue::bootTime() const {
    return macBootTime();
}

WallTime DispatchSerialQueue::wallTime() const {
    return macWallTime();
}

}  // namespace corvane
