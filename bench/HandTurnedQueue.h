#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "platform/SerialQueue.h"

namespace corvane {

/// A serial queue for one thread that costs next to nothing itself: work runs where it is handed over, timers
/// run when told to.
class HandTurnedQueue final : public SerialQueue {
public:
    /// Lets `interval` pass and then runs the timers with that delay or period, and no others. Does not
    /// allocate.
    void turn(Duration interval) {
        now_ += interval;
        for (std::size_t i = 0; i < timers_.size(); ++i) {
            if (timers_[i]->interval == interval) {
                const std::shared_ptr<const Work> work = timers_[i]->work;
                (*work)();
            }
        }
    }

    void async(Work work) override { work(); }
    void sync(const Work& work) override { work(); }
    void syncAhead(const Work& work) override { work(); }
    [[nodiscard]] std::unique_ptr<Timer> after(Duration delay, Work work) override {
        return std::make_unique<HandTimer>(timers_, delay, std::move(work));
    }
    [[nodiscard]] std::unique_ptr<Timer> at(WallTime time, Work work) override {
        return after(time - wallTime(), std::move(work));
    }
    [[nodiscard]] std::unique_ptr<Timer> every(Duration /*first*/, Duration period, Work work) override {
        return std::make_unique<HandTimer>(timers_, period, std::move(work));
    }
    void sleep(Duration duration) override { now_ += duration; }
    [[nodiscard]] BootTime bootTime() const override { return now_; }
    [[nodiscard]] WallTime wallTime() const override {
        return WallTime(std::chrono::duration_cast<WallTime::duration>(now_.time_since_epoch()));
    }

private:
    struct HandTimer final : Timer {
        HandTimer(std::vector<HandTimer*>& all, Duration every, Work what)
            : timers(all), interval(every), work(std::make_shared<const Work>(std::move(what))) {
            timers.push_back(this);
        }
        HandTimer(const HandTimer&) = delete;
        HandTimer& operator=(const HandTimer&) = delete;
        ~HandTimer() override { timers.erase(std::find(timers.begin(), timers.end(), this)); }

        std::vector<HandTimer*>& timers;
        Duration interval;
        std::shared_ptr<const Work> work;
    };

    std::vector<HandTimer*> timers_;
    BootTime now_{std::chrono::hours(1)};
};

}  // namespace corvane
