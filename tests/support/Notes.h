#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace corvane {

/// How long a test waits for what must happen; far more than any machine needs.
inline constexpr std::chrono::seconds testPatience{30};

/// What happened, in order. Any thread may note and wait.
template <typename T>
class Notes {
public:
    void add(T note) {
        {
            const std::lock_guard lock(mutex_);
            notes_.push_back(std::move(note));
        }
        changed_.notify_all();
    }

    [[nodiscard]] std::vector<T> all() const {
        const std::lock_guard lock(mutex_);
        return notes_;
    }

    [[nodiscard]] std::size_t size() const {
        const std::lock_guard lock(mutex_);
        return notes_.size();
    }

    /// What `all` returns, and forgets it.
    [[nodiscard]] std::vector<T> take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(notes_, {});
    }

    /// False when there still were fewer when patience was over.
    [[nodiscard]] bool waitFor(std::size_t count) const {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, testPatience, [&] { return notes_.size() >= count; });
    }

private:
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::vector<T> notes_;
};

}  // namespace corvane
