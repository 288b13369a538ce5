#include "bench/TickRecorder.h"

#include <pthread.h>

namespace corvane {

namespace {

/// How long the end may take.
constexpr auto longestWait = std::chrono::milliseconds(500);

}  // namespace

TickRecorder::TickRecorder(const std::string& dutyFile) : watch_(dutyFile), thread_([this] { record(); }) {
    sched_param priority{};
    priority.sched_priority = 1;
    goesFirst_ = pthread_setschedparam(thread_.native_handle(), SCHED_FIFO, &priority) == 0;
}

const std::vector<TickRecorder::Clock::time_point>& TickRecorder::stop() {
    isDone_ = true;
    if (thread_.joinable()) {
        thread_.join();
    }
    return writes_;
}

void TickRecorder::record() {
    while (!isDone_) {
        if (const auto write = watch_.nextWrite(Clock::now() + longestWait)) {
            writes_.push_back(*write);
        }
    }
}

}  // namespace corvane
