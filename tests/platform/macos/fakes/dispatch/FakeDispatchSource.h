#pragma once

#include <cstdint>
#include <memory>

#include "platform/Lifetime.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatchObject.h"

namespace corvane {

/// What the handle of a timer or of a signal source leads to.
class FakeDispatchSource final : public FakeDispatchObject {
public:
    using Handler = void (*)(void*);
    static constexpr int noSignal = 0;

    /// `signal` is `noSignal` for a timer.
    FakeDispatchSource(VirtualQueue& queue, int signal) : queue_(queue), signal_(signal) {}

    void resume() override;
    void cancel();

    /// On the calendar when it is negative, else in awake time; nanoseconds.
    void setTimer(std::uint64_t start);
    /// The clocks have changed.
    void armAgain();

    /// The kernel notes signals for it.
    [[nodiscard]] bool isRegisteredFor(int signal) const { return isRegistered_ && signal_ == signal; }
    /// The signal came.
    void arrive();

    [[nodiscard]] bool isSuspended() const { return isSuspended_; }
    [[nodiscard]] std::uintptr_t data() const { return data_; }

    Handler onEvent = nullptr;
    Handler onRegistration = nullptr;

private:
    void call(Handler handler);

    VirtualQueue& queue_;
    int signal_;
    bool isSuspended_ = true;
    bool isRegistered_ = false;
    bool isCancelled_ = false;
    std::uint64_t start_ = ~std::uint64_t{0};
    std::unique_ptr<Timer> timer_;
    std::uintptr_t data_ = 0;
    std::uintptr_t arrived_ = 0;
    Lifetime lifetime_;
};

}  // namespace corvane
