#include "bench/Crowd.h"

namespace corvane {

namespace {

/// Between two looks at the clock while nothing is answered.
constexpr int longestPollMs = 100;

}  // namespace

Crowd::Crowd(const std::string& address, std::size_t count) {
    while (callers_.size() < count) {
        callers_.push_back(std::make_unique<CountingCaller>(address));
    }
}

void Crowd::callUntil(Clock::time_point deadline) {
    for (const auto& caller : callers_) {
        caller->callOnAndOn();
    }
    std::vector<pollfd> waiting(callers_.size());
    while (Clock::now() < deadline) {
        for (std::size_t i = 0; i < callers_.size(); ++i) {
            waiting[i] = callers_[i]->interest();
        }
        ::poll(waiting.data(), waiting.size(), longestPollMs);
        for (std::size_t i = 0; i < callers_.size(); ++i) {
            if (waiting[i].revents != 0) {
                callers_[i]->process();
            }
        }
    }
    for (const auto& caller : callers_) {
        caller->stop();
    }
}

std::uint64_t Crowd::answers() const {
    std::uint64_t sum = 0;
    for (const auto& caller : callers_) {
        sum += caller->answers();
    }
    return sum;
}

std::uint64_t Crowd::errors() const {
    std::uint64_t sum = 0;
    for (const auto& caller : callers_) {
        sum += caller->errors();
    }
    return sum;
}

}  // namespace corvane
