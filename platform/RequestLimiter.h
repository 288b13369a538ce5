#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace corvane {

/// Bounds how many requests wait for their answers, in all and for each caller. Any thread.
class RequestLimiter : public std::enable_shared_from_this<RequestLimiter> {
public:
    /// A thousand callers with a request each fit in.
    static constexpr std::size_t maxWaiting = 2048;
    /// More than any honest caller has under way.
    static constexpr std::size_t maxWaitingPerCaller = 64;

    /// Holds a place for one request while it lives.
    using Place = std::shared_ptr<void>;

    /// Null when there is no place for another request of `caller`.
    Place admit(const std::string& caller);

private:
    void leave(const std::string& caller);

    std::mutex mutex_;
    std::size_t waiting_ = 0;
    std::map<std::string, std::size_t> waitingPerCaller_;
};

}  // namespace corvane
