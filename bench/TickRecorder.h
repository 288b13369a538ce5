#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "bench/DutyWatch.h"

namespace corvane {

/// Notes every write to a fan on a thread of its own, which goes before all others if the system lets it.
class TickRecorder {
public:
    using Clock = DutyWatch::Clock;

    explicit TickRecorder(const std::string& dutyFile);
    TickRecorder(const TickRecorder&) = delete;
    TickRecorder& operator=(const TickRecorder&) = delete;
    ~TickRecorder() { stop(); }

    /// False: the recorder itself may be late, so that ticks look less steady than they are.
    [[nodiscard]] bool goesFirst() const { return goesFirst_; }

    /// Ends it. How far apart the writes were seen, one after the other, ms.
    std::vector<double> stop();

private:
    void record();

    DutyWatch watch_;
    std::atomic<bool> isDone_ = false;
    std::vector<Clock::time_point> writes_;
    std::thread thread_;
    bool goesFirst_ = false;
};

}  // namespace corvane
