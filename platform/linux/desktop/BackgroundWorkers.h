#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

namespace corvane {

/// Does work in the background that may get stuck in the kernel, on a drive that does not answer, each piece
/// on a thread of its own if need be. The threads run at the lowest priority: nobody waits for this work, and
/// the kernel gives the lowest priority of input and output along with it.
///
/// Any thread.
class BackgroundWorkers {
public:
    /// Stuck threads are not replaced beyond that: so many drives may hang at a time.
    static constexpr std::size_t maxThreads = 16;
    static constexpr std::size_t maxWaiting = 256;

    /// A thread that has had nothing to do for so long ends.
    explicit BackgroundWorkers(std::chrono::milliseconds idle = std::chrono::seconds(10));
    BackgroundWorkers(const BackgroundWorkers&) = delete;
    BackgroundWorkers& operator=(const BackgroundWorkers&) = delete;
    /// Drops what has not begun. Waits for nothing: what has begun goes on, so work touches nothing that it
    /// does not share.
    ~BackgroundWorkers();

    /// Runs `work`, which must not throw, sooner or later. False, and `work` is dropped, when too much waits
    /// or no thread can be made.
    bool post(std::function<void()> work);

    /// How many threads there are now.
    [[nodiscard]] std::size_t threads() const;

private:
    class Pool;
    std::shared_ptr<Pool> pool_;
};

}  // namespace corvane
