#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "platform/SerialQueue.h"

namespace corvane {

class VirtualQueue;

/// Time that passes only when told to, shared by any number of queues. Everything runs on the one thread that
/// calls `advance`, in order of due time, then of hand-over: the same calls give the same run every time.
class VirtualTime {
public:
    /// Lets `duration` pass and runs everything that falls due on the way.
    void advance(Duration duration);

    /// Runs everything that is due now, without letting time pass.
    void settle() { advance(Duration::zero()); }

    /// Lets `duration` pass without running anything, as when the computer is suspended. What fell due
    /// meanwhile runs at the next `advance`.
    void suspend(Duration duration) { now_ += duration; }

    /// Sets the calendar; boot time is not touched.
    void setWallTime(WallTime time);

    [[nodiscard]] BootTime bootTime() const { return now_; }
    [[nodiscard]] WallTime wallTime() const { return WallTime(sinceStart()) + wallOffset_; }

private:
    friend class VirtualQueue;

    /// What waits for the calendar.
    class CalendarTimer {
    public:
        CalendarTimer() = default;
        CalendarTimer(const CalendarTimer&) = delete;
        CalendarTimer& operator=(const CalendarTimer&) = delete;
        virtual ~CalendarTimer() = default;

        /// The calendar was set.
        virtual void armAgain() = 0;
    };

    struct Event {
        VirtualQueue* queue;
        std::function<void()> work;
    };
    using EventKey = std::pair<BootTime, std::uint64_t>;
    using Events = std::map<EventKey, Event>;

    EventKey schedule(VirtualQueue& queue, BootTime due, std::function<void()> work);
    void cancel(const EventKey& key) { events_.erase(key); }
    void runUntil(BootTime deadline);
    /// Earliest event due by `deadline` whose queue is not asleep and, if given, is `only`.
    Events::iterator nextRunnable(BootTime deadline, const VirtualQueue* only);
    void runEvent(Events::iterator event);
    [[nodiscard]] std::chrono::system_clock::duration sinceStart() const {
        return std::chrono::duration_cast<std::chrono::system_clock::duration>(now_.time_since_epoch());
    }

    BootTime now_{std::chrono::hours(1)};
    std::chrono::system_clock::duration wallOffset_{std::chrono::hours(24 * 365 * 50)};
    std::uint64_t handedOver_ = 0;
    Events events_;
    std::set<CalendarTimer*> calendarTimers_;
};

/// A serial queue on virtual time. While it sleeps, other queues go on.
class VirtualQueue final : public SerialQueue {
public:
    /// `time` outlives the queue.
    explicit VirtualQueue(VirtualTime& time) : time_(time) {}
    ~VirtualQueue() override;

    void async(Work work) override;
    void sync(const Work& work) override;
    void syncAhead(const Work& work) override;
    [[nodiscard]] std::unique_ptr<Timer> after(Duration delay, Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> at(WallTime time, Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> every(Duration first, Duration period, Work work) override;
    void sleep(Duration duration) override;
    [[nodiscard]] BootTime bootTime() const override { return time_.bootTime(); }
    [[nodiscard]] WallTime wallTime() const override { return time_.wallTime(); }

private:
    friend class VirtualTime;
    class VirtualTimer;
    class VirtualCalendarTimer;

    void refuseToWaitForCaller() const;

    VirtualTime& time_;
    bool busy_ = false;
};

}  // namespace corvane
