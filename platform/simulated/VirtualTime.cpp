#include "platform/simulated/VirtualTime.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace corvane {

void VirtualTime::advance(Duration duration) {
    runUntil(now_ + duration);
}

void VirtualTime::setWallTime(WallTime time) {
    wallOffset_ = time - WallTime(sinceStart());
    for (CalendarTimer* timer : calendarTimers_) {
        timer->armAgain();
    }
}

VirtualTime::EventKey VirtualTime::schedule(VirtualQueue& queue, BootTime due, std::function<void()> work) {
    const EventKey key{due, handedOver_++};
    events_.emplace(key, Event{&queue, std::move(work)});
    return key;
}

VirtualTime::Events::iterator VirtualTime::nextRunnable(BootTime deadline, const VirtualQueue* only) {
    auto event = events_.begin();
    while (event != events_.end() && event->first.first <= deadline) {
        const VirtualQueue* queue = event->second.queue;
        if (!queue->busy_ && (only == nullptr || queue == only)) {
            return event;
        }
        ++event;
    }
    return events_.end();
}

void VirtualTime::runEvent(Events::iterator event) {
    now_ = std::max(now_, event->first.first);
    const Event running = std::move(event->second);
    events_.erase(event);
    running.queue->busy_ = true;
    running.work();
    running.queue->busy_ = false;
}

void VirtualTime::runUntil(BootTime deadline) {
    for (auto event = nextRunnable(deadline, nullptr); event != events_.end();
         event = nextRunnable(deadline, nullptr)) {
        runEvent(event);
    }
    now_ = std::max(now_, deadline);
}

/// Cancels its event when destroyed; a timer destroyed by its own work has no event left to cancel.
class VirtualQueue::VirtualTimer final : public Timer {
public:
    VirtualTimer(VirtualQueue& queue, BootTime due, Duration period, Work work)
        : queue_(queue), due_(due), period_(period), work_(std::make_shared<Work>(std::move(work))) {
        arm();
    }
    VirtualTimer(const VirtualTimer&) = delete;
    VirtualTimer& operator=(const VirtualTimer&) = delete;
    ~VirtualTimer() override {
        if (armed_) {
            queue_.time_.cancel(*armed_);
        }
    }

private:
    void arm() {
        armed_ = queue_.time_.schedule(queue_, due_, [this] { fire(); });
    }

    void fire() {
        armed_.reset();
        if (period_ > Duration::zero()) {
            const Duration late = queue_.bootTime() - due_;
            due_ += period_ * (late / period_ + 1);
            arm();
        }
        const std::shared_ptr<Work> work = work_;
        (*work)();
    }

    VirtualQueue& queue_;
    BootTime due_;
    Duration period_;
    std::shared_ptr<Work> work_;
    std::optional<VirtualTime::EventKey> armed_;
};

/// Moves its event whenever the calendar is set.
class VirtualQueue::VirtualCalendarTimer final : public Timer, public VirtualTime::CalendarTimer {
public:
    VirtualCalendarTimer(VirtualQueue& queue, WallTime due, Work work)
        : queue_(queue), due_(due), work_(std::make_shared<Work>(std::move(work))) {
        queue_.time_.calendarTimers_.insert(this);
        arm();
    }
    VirtualCalendarTimer(const VirtualCalendarTimer&) = delete;
    VirtualCalendarTimer& operator=(const VirtualCalendarTimer&) = delete;
    ~VirtualCalendarTimer() override { disarm(); }

    void armAgain() override {
        queue_.time_.cancel(armed_);
        arm();
    }

private:
    void arm() {
        const Duration left = std::max<Duration>(due_ - queue_.wallTime(), Duration::zero());
        armed_ = queue_.time_.schedule(queue_, queue_.bootTime() + left, [this] { fire(); });
    }

    void disarm() {
        if (queue_.time_.calendarTimers_.erase(this) != 0) {
            queue_.time_.cancel(armed_);
        }
    }

    void fire() {
        disarm();
        const std::shared_ptr<Work> work = work_;
        (*work)();
    }

    VirtualQueue& queue_;
    WallTime due_;
    std::shared_ptr<Work> work_;
    VirtualTime::EventKey armed_;
};

VirtualQueue::~VirtualQueue() {
    std::erase_if(time_.events_, [this](const auto& event) { return event.second.queue == this; });
}

void VirtualQueue::async(Work work) {
    time_.schedule(*this, time_.now_, std::move(work));
}

void VirtualQueue::refuseToWaitForCaller() const {
    if (busy_) {
        std::fputs("VirtualQueue: this would never return, the queue is waiting for its caller\n", stderr);
        std::abort();
    }
}

void VirtualQueue::sync(const Work& work) {
    refuseToWaitForCaller();
    for (auto event = time_.nextRunnable(time_.now_, this); event != time_.events_.end();
         event = time_.nextRunnable(time_.now_, this)) {
        time_.runEvent(event);
    }
    syncAhead(work);
}

void VirtualQueue::syncAhead(const Work& work) {
    refuseToWaitForCaller();
    busy_ = true;
    work();
    busy_ = false;
}

std::unique_ptr<Timer> VirtualQueue::after(Duration delay, Work work) {
    return std::make_unique<VirtualTimer>(*this, time_.now_ + delay, Duration::zero(), std::move(work));
}

std::unique_ptr<Timer> VirtualQueue::at(WallTime time, Work work) {
    return std::make_unique<VirtualCalendarTimer>(*this, time, std::move(work));
}

std::unique_ptr<Timer> VirtualQueue::every(Duration first, Duration period, Work work) {
    return std::make_unique<VirtualTimer>(*this, time_.now_ + first, period, std::move(work));
}

void VirtualQueue::sleep(Duration duration) {
    const bool wasBusy = busy_;
    busy_ = true;
    time_.runUntil(time_.now_ + duration);
    busy_ = wasBusy;
}

}  // namespace corvane
