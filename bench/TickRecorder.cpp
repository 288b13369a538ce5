#include "bench/TickRecorder.h"

#include <pthread.h>

namespace corvane {

namespace {

/// How long the end may take.
constexpr auto longestLook = std::chrono::milliseconds(500);

}  // namespace

TickRecorder::TickRecorder(const std::string& dutyFile) : watch_(dutyFile), thread_([this] { record(); }) {
    sched_param priority{};
    priority.sched_priority = 1;
    goesFirst_ = pthread_setschedparam(thread_.native_handle(), SCHED_FIFO, &priority) == 0;
}

std::vector<double> TickRecorder::stop() {
    isDone_ = true;
    if (thread_.joinable()) {
        thread_.join();
    }
    std::vector<double> distances;
    for (std::size_t i = 1; i < writes_.size(); ++i) {
        const std::chrono::duration<double, std::milli> distance = writes_[i] - writes_[i - 1];
        distances.push_back(distance.count());
    }
    return distances;
}

void TickRecorder::record() {
    while (!isDone_) {
        if (const auto write = watch_.nextWrite(Clock::now() + longestLook)) {
            writes_.push_back(*write);
        }
    }
}

}  // namespace corvane
