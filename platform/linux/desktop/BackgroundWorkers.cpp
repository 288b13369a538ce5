#include "platform/linux/desktop/BackgroundWorkers.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include <pthread.h>
#include <sys/resource.h>

namespace corvane {

namespace {

constexpr int lowestPriority = 19;

}  // namespace

/// Shared by the threads, which are detached: the last one to leave destroys it.
class BackgroundWorkers::Pool : public std::enable_shared_from_this<Pool> {
public:
    explicit Pool(std::chrono::milliseconds idle) : idle_(idle) {}

    bool post(std::function<void()> work) {
        const std::lock_guard lock(mutex_);
        if (waiting_.size() >= maxWaiting) {
            return false;
        }
        if (waiting_.size() >= idleThreads_ && threads_ < maxThreads) {
            addThread();
        }
        if (threads_ == 0) {
            return false;
        }
        waiting_.push_back(std::move(work));
        changed_.notify_one();
        return true;
    }

    void close() {
        std::deque<std::function<void()>> dropped;
        {
            const std::lock_guard lock(mutex_);
            isClosed_ = true;
            dropped.swap(waiting_);
        }
        changed_.notify_all();
    }

    [[nodiscard]] std::size_t threads() const {
        const std::lock_guard lock(mutex_);
        return threads_;
    }

private:
    /// When the system has no thread to spare, those there are have to do.
    void addThread() {
        try {
            std::thread([self = shared_from_this()] { self->work(); }).detach();
            ++threads_;
        } catch (const std::system_error&) {
            return;
        }
    }

    void work() {
        pthread_setname_np(pthread_self(), "background");
        // 0 is the calling thread; below the lowest there is nothing to fall back to.
        setpriority(PRIO_PROCESS, 0, lowestPriority);
        std::unique_lock lock(mutex_);
        while (waitForWork(lock)) {
            std::function<void()> work = std::move(waiting_.front());
            waiting_.pop_front();
            lock.unlock();
            work();
            work = nullptr;
            lock.lock();
        }
        --threads_;
    }

    bool waitForWork(std::unique_lock<std::mutex>& lock) {
        ++idleThreads_;
        changed_.wait_for(lock, idle_, [this] { return isClosed_ || !waiting_.empty(); });
        --idleThreads_;
        return !isClosed_ && !waiting_.empty();
    }

    std::chrono::milliseconds idle_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> waiting_;
    std::size_t threads_ = 0;
    std::size_t idleThreads_ = 0;
    bool isClosed_ = false;
};

BackgroundWorkers::BackgroundWorkers(std::chrono::milliseconds idle) : pool_(std::make_shared<Pool>(idle)) {}

BackgroundWorkers::~BackgroundWorkers() {
    pool_->close();
}

bool BackgroundWorkers::post(std::function<void()> work) {
    return pool_->post(std::move(work));
}

std::size_t BackgroundWorkers::threads() const {
    return pool_->threads();
}

}  // namespace corvane
