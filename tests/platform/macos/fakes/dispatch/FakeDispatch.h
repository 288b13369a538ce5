#pragma once

#include <csignal>
#include <deque>
#include <functional>
#include <set>

#include "platform/simulated/VirtualTime.h"

namespace corvane {

class FakeDispatchQueue;
class FakeDispatchSource;

/// Dispatch and the kernel's clocks on virtual time, for as long as this lives: everything runs on the one
/// thread that lets the time pass, each queue in its order. One at a time; made before anything that uses
/// Dispatch and destroyed after it. The test fails when a queue or a source is left behind.
class FakeDispatch {
public:
    /// `time` outlives this.
    explicit FakeDispatch(VirtualTime& time);
    FakeDispatch(const FakeDispatch&) = delete;
    FakeDispatch& operator=(const FakeDispatch&) = delete;
    ~FakeDispatch();

    /// The one there is. Without one the test program ends.
    static FakeDispatch& current();

    [[nodiscard]] VirtualTime& time() { return time_; }

    /// The computer sleeps for `duration`: nothing runs, and the clock that counts only what it is awake
    /// stands still.
    void suspend(Duration duration);

    /// The main thread's queue.
    [[nodiscard]] VirtualQueue& mainQueue() { return mainQueue_; }
    /// True when what runs now runs on the main thread.
    [[nodiscard]] bool isOnMainThread() const { return running_ == nullptr || running_ == &mainQueue_; }

    /// Another queue, which lasts as long as this.
    VirtualQueue& makeQueue() { return queues_.emplace_back(time_); }
    /// Runs `work` on `queue` later.
    void async(VirtualQueue& queue, std::function<void()> work);
    /// Runs `work` on `queue` after what waits there, and returns when it is done.
    void sync(VirtualQueue& queue, const std::function<void()>& work);

    /// A signal arrives at the process. The test fails when it would have ended it.
    void raise(int signal);

    /// How many nanoseconds `denom` ticks of the kernel's clocks last. 1 and 1, an Intel's, to begin with.
    void setTimebase(unsigned numer, unsigned denom);

    // What the faked functions see.

    [[nodiscard]] unsigned timebaseNumer() const { return timebaseNumer_; }
    [[nodiscard]] unsigned timebaseDenom() const { return timebaseDenom_; }
    /// Time since the boot without the time that the computer slept.
    [[nodiscard]] Duration awakeTime() const { return time_.bootTime().time_since_epoch() - slept_; }
    /// Blocks what runs now; other queues go on.
    void sleep(Duration duration);
    /// Runs `work` as what `queue` does now.
    void runOn(VirtualQueue& queue, const std::function<void()>& work);

    /// Those that are not released yet.
    std::set<FakeDispatchQueue*> queueHandles;
    std::set<FakeDispatchSource*> sources;

private:
    VirtualTime& time_;
    VirtualQueue mainQueue_{time_};
    std::deque<VirtualQueue> queues_;
    /// Null on the bare main thread.
    VirtualQueue* running_ = nullptr;
    Duration slept_{};
    unsigned timebaseNumer_ = 1;
    unsigned timebaseDenom_ = 1;
};

}  // namespace corvane
