#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/platform/macos/fakes/dispatch/FakeDispatchSource.h"

namespace corvane {

namespace {

FakeDispatch* theDispatch = nullptr;

[[noreturn]] void giveUp(const char* why) {
    std::fprintf(stderr, "Dispatch: %s\n", why);
    std::abort();
}

/// As the kernel decides when nobody waits for it.
bool wouldEndTheProcess(int signal) {
    sigset_t blocked;
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    return sigismember(&blocked, signal) == 0 && action.sa_handler == SIG_DFL;
}

}  // namespace

FakeDispatch::FakeDispatch(VirtualTime& time) : time_(time) {
    if (std::exchange(theDispatch, this) != nullptr) {
        giveUp("there is one already");
    }
}

FakeDispatch::~FakeDispatch() {
    // What was handed over before its queue was released.
    time_.settle();
    EXPECT_EQ(queueHandles.size(), 0U) << "queues were not released";
    EXPECT_EQ(sources.size(), 0U) << "sources were not released";
    theDispatch = nullptr;
}

FakeDispatch& FakeDispatch::current() {
    if (theDispatch == nullptr) {
        giveUp("used without a FakeDispatch");
    }
    return *theDispatch;
}

void FakeDispatch::suspend(Duration duration) {
    time_.suspend(duration);
    slept_ += duration;
    for (FakeDispatchSource* source : sources) {
        source->armAgain();
    }
}

void FakeDispatch::async(VirtualQueue& queue, std::function<void()> work) {
    queue.async([this, &queue, work = std::move(work)] { runOn(queue, work); });
}

void FakeDispatch::sync(VirtualQueue& queue, const std::function<void()>& work) {
    const bool isOnBareMainThread = running_ == nullptr;
    if (running_ == &queue || (isOnBareMainThread && &queue == &mainQueue_)) {
        giveUp("this would never return, the queue waits for its caller");
    }
    bool isDone = false;
    queue.async([&] {
        runOn(queue, work);
        isDone = true;
    });
    if (isOnBareMainThread) {
        // Which empties no queue while it waits.
        mainQueue_.syncAhead([this] { time_.settle(); });
    } else {
        time_.settle();
    }
    if (!isDone) {
        giveUp("this would never return, the queue is busy below its caller");
    }
}

void FakeDispatch::raise(int signal) {
    for (FakeDispatchSource* source : sources) {
        if (source->isRegisteredFor(signal)) {
            source->arrive();
        }
    }
    if (wouldEndTheProcess(signal)) {
        ADD_FAILURE() << "signal " << signal << " would have ended the process";
        return;
    }
    kill(getpid(), signal);
}

void FakeDispatch::setTimebase(unsigned numer, unsigned denom) {
    timebaseNumer_ = numer;
    timebaseDenom_ = denom;
}

void FakeDispatch::sleep(Duration duration) {
    (running_ == nullptr ? mainQueue_ : *running_).sleep(std::max(duration, Duration::zero()));
}

void FakeDispatch::runOn(VirtualQueue& queue, const std::function<void()>& work) {
    VirtualQueue* const before = std::exchange(running_, &queue);
    work();
    running_ = before;
}

}  // namespace corvane
