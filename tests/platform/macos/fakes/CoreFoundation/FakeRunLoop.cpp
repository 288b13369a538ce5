// The main thread's run loop: time passes while it runs, and with it what waits on the main queue runs.

#include <chrono>

#include <CoreFoundation/CFRunLoop.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/MainThread.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

using corvane::FakeDispatch;

namespace {

/// In virtual time; a test's script is shorter.
constexpr std::chrono::hours fakePatience{1};

bool isStopped = false;

}  // namespace

CFRunLoopRef CFRunLoopGetMain(void) {
    return reinterpret_cast<CFRunLoopRef>(&isStopped);
}

void CFRunLoopRun(void) {
    corvane::expectMainThread("CFRunLoopRun");
    FakeDispatch& dispatch = FakeDispatch::current();
    const corvane::BootTime end = dispatch.time().bootTime() + fakePatience;
    isStopped = false;
    dispatch.time().settle();
    while (!isStopped && dispatch.time().bootTime() < end) {
        dispatch.time().advance(std::chrono::milliseconds(1));
    }
    EXPECT_TRUE(isStopped) << "the main run loop was never left";
}

void CFRunLoopStop(CFRunLoopRef /*loop*/) {
    isStopped = true;
}
