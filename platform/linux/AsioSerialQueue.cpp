#include "platform/linux/AsioSerialQueue.h"

#include <future>
#include <utility>

#include <asio/basic_waitable_timer.hpp>
#include <asio/posix/stream_descriptor.hpp>
#include <asio/post.hpp>
#include <pthread.h>

#include "platform/linux/LinuxClock.h"
#include "platform/linux/TimerDescriptor.h"

namespace corvane {

namespace {

struct LinuxBootClock : BootClock {
    static time_point now() { return linuxBootTime(); }
};

using AsioTimer = asio::basic_waitable_timer<LinuxBootClock>;

/// The part of a timer that its pending wait keeps alive, so that a timer may be destroyed by its own work.
struct TimerState : std::enable_shared_from_this<TimerState> {
    TimerState(asio::io_context& context, BootTime firstDue, Duration every, SerialQueue::Work what)
        : timer(context), due(firstDue), period(every), work(std::move(what)) {}

    void arm() {
        timer.expires_at(due);
        timer.async_wait([self = shared_from_this()](const std::error_code& error) {
            if (!error && !self->isCancelled) {
                self->fire();
            }
        });
    }

    void fire() {
        if (period > Duration::zero()) {
            const Duration late = linuxBootTime() - due;
            due += period * (late / period + 1);
            arm();
        }
        work();
    }

    AsioTimer timer;
    BootTime due;
    Duration period;
    SerialQueue::Work work;
    bool isCancelled = false;
};

class QueueTimer final : public Timer {
public:
    explicit QueueTimer(std::shared_ptr<TimerState> state) : state_(std::move(state)) { state_->arm(); }
    QueueTimer(const QueueTimer&) = delete;
    QueueTimer& operator=(const QueueTimer&) = delete;
    ~QueueTimer() override {
        // A wait that has already expired still runs its handler: the mark is what stops it.
        state_->isCancelled = true;
        state_->timer.cancel();
    }

private:
    std::shared_ptr<TimerState> state_;
};

/// The same for a timer of the calendar.
struct CalendarState : std::enable_shared_from_this<CalendarState> {
    CalendarState(asio::io_context& context, WallTime due, SerialQueue::Work what)
        : alarm(context, makeTimerDescriptor(CLOCK_REALTIME)), work(std::move(what)) {
        setTimerDescriptor(alarm.native_handle(), due.time_since_epoch());
    }

    void arm() {
        alarm.async_wait(alarm.wait_read, [self = shared_from_this()](const std::error_code& error) {
            if (!error && !self->isCancelled) {
                self->work();
            }
        });
    }

    asio::posix::stream_descriptor alarm;
    SerialQueue::Work work;
    bool isCancelled = false;
};

class CalendarTimer final : public Timer {
public:
    explicit CalendarTimer(std::shared_ptr<CalendarState> state) : state_(std::move(state)) { state_->arm(); }
    CalendarTimer(const CalendarTimer&) = delete;
    CalendarTimer& operator=(const CalendarTimer&) = delete;
    ~CalendarTimer() override {
        state_->isCancelled = true;
        state_->alarm.cancel();
    }

private:
    std::shared_ptr<CalendarState> state_;
};

constexpr std::size_t longestThreadName = 15;

}  // namespace

AsioSerialQueue::AsioSerialQueue(std::string_view label) : thread_([this] { context_.run(); }) {
    pthread_setname_np(thread_.native_handle(), std::string(label.substr(0, longestThreadName)).c_str());
}

AsioSerialQueue::~AsioSerialQueue() {
    context_.stop();
    thread_.join();
}

void AsioSerialQueue::async(Work work) {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
    if (waiting_.size() == 1) {
        asio::post(context_, [this] { runNext(); });
    }
}

/// Runs one piece of work and comes back for the next by way of the event loop, which looks at its timers in
/// between.
void AsioSerialQueue::runNext() {
    Work next;
    {
        const std::lock_guard lock(mutex_);
        next = std::move(waiting_.front());
    }
    next();
    // What the work held goes before the lock is taken: it may hand over more.
    next = nullptr;
    const std::lock_guard lock(mutex_);
    waiting_.pop_front();
    if (!waiting_.empty()) {
        asio::post(context_, [this] { runNext(); });
    }
}

void AsioSerialQueue::sync(const Work& work) {
    std::promise<void> done;
    async([&] {
        work();
        done.set_value();
    });
    done.get_future().wait();
}

void AsioSerialQueue::syncAhead(const Work& work) {
    std::promise<void> done;
    // Of the waiting work only the next piece is known to the event loop.
    asio::post(context_, [&] {
        work();
        done.set_value();
    });
    done.get_future().wait();
}

std::unique_ptr<Timer> AsioSerialQueue::after(Duration delay, Work work) {
    return std::make_unique<QueueTimer>(
        std::make_shared<TimerState>(context_, bootTime() + delay, Duration::zero(), std::move(work)));
}

std::unique_ptr<Timer> AsioSerialQueue::at(WallTime time, Work work) {
    return std::make_unique<CalendarTimer>(std::make_shared<CalendarState>(context_, time, std::move(work)));
}

std::unique_ptr<Timer> AsioSerialQueue::every(Duration first, Duration period, Work work) {
    return std::make_unique<QueueTimer>(
        std::make_shared<TimerState>(context_, bootTime() + first, period, std::move(work)));
}

void AsioSerialQueue::sleep(Duration duration) {
    std::this_thread::sleep_for(duration);
}

BootTime AsioSerialQueue::bootTime() const {
    return linuxBootTime();
}

WallTime AsioSerialQueue::wallTime() const {
    return linuxWallTime();
}

}  // namespace corvane
