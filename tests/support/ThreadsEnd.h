#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <thread>

#include "tests/support/Notes.h"

namespace corvane {

/// Sees to it that the threads that begin in its life have ended with it, down to what they free last.
///
/// QThread::wait returns a little before the thread has ended, and so does what Qt runs on threads of its
/// own. OpenSSL keeps memory for each thread, freed as the thread ends; when the process ends before that,
/// OpenSSL forgets that memory and LeakSanitizer reports it.
class ThreadsEnd {
public:
    ThreadsEnd() : before_(threads()) {}
    ThreadsEnd(const ThreadsEnd&) = delete;
    ThreadsEnd& operator=(const ThreadsEnd&) = delete;
    ~ThreadsEnd() {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (threads() > before_ && std::chrono::steady_clock::now() < end) {
            std::this_thread::yield();
        }
    }

private:
    /// How many this process has, and a constant: each is a folder.
    static std::uintmax_t threads() { return std::filesystem::hard_link_count("/proc/self/task"); }

    const std::uintmax_t before_;
};

}  // namespace corvane
