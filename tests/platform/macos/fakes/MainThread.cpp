#include "tests/platform/macos/fakes/MainThread.h"

#include <thread>

#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Current.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {

namespace {

/// The thread that initialises the program.
const std::thread::id mainThreadId = std::this_thread::get_id();

}  // namespace

void expectMainThread(const char* function) {
    const FakeDispatch* const dispatch = Current<FakeDispatch>::get();
    const bool isMain = dispatch == nullptr || dispatch->isOnMainThread();
    EXPECT_TRUE(isMain && std::this_thread::get_id() == mainThreadId)
        << function << " belongs to the main thread";
}

}  // namespace corvane
