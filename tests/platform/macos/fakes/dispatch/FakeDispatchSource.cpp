#include "tests/platform/macos/fakes/dispatch/FakeDispatchSource.h"

#include <algorithm>
#include <utility>

#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {

namespace {

constexpr std::uint64_t never = ~std::uint64_t{0};

}  // namespace

void FakeDispatchSource::resume() {
    isSuspended_ = false;
    if (signal_ != noSignal) {
        isRegistered_ = true;
        FakeDispatch::current().async(queue_, lifetime_.bound([this] { call(onRegistration); }));
    }
    armAgain();
}

void FakeDispatchSource::cancel() {
    isCancelled_ = true;
    isRegistered_ = false;
    timer_.reset();
}

void FakeDispatchSource::setTimer(std::uint64_t start) {
    start_ = start;
    armAgain();
}

void FakeDispatchSource::armAgain() {
    timer_.reset();
    if (start_ == never || isSuspended_ || isCancelled_) {
        return;
    }
    const auto fire = [this] {
        start_ = never;
        call(onEvent);
    };
    const auto value = static_cast<std::int64_t>(start_);
    if (value < 0) {
        timer_ = queue_.at(WallTime(std::chrono::nanoseconds(-value)), fire);
    } else {
        const Duration left = Duration(value) - FakeDispatch::current().awakeTime();
        timer_ = queue_.after(std::max(left, Duration::zero()), fire);
    }
}

void FakeDispatchSource::arrive() {
    if (++arrived_ > 1) {
        return;
    }
    FakeDispatch::current().async(queue_, lifetime_.bound([this] {
        data_ = std::exchange(arrived_, 0);
        call(onEvent);
    }));
}

void FakeDispatchSource::call(Handler handler) {
    if (!isCancelled_ && handler != nullptr) {
        FakeDispatch::current().runOn(queue_, [this, handler] { handler(context); });
    }
}

}  // namespace corvane
