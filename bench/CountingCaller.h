#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include <poll.h>
#include <sdbus-c++/sdbus-c++.h>

namespace corvane {

/// One program that calls the helper, with a bus connection of its own, and counts what is answered. One
/// thread; answers arrive in `process` only.
class CountingCaller {
public:
    /// Connects to the bus at `address`; throws sdbus::Error.
    explicit CountingCaller(const std::string& address);
    CountingCaller(const CountingCaller&) = delete;
    CountingCaller& operator=(const CountingCaller&) = delete;

    /// Asks for a floor; returns before the answer.
    void setFloor(double percent);
    void ping();
    /// From now on calls again with every answer, `ping` and `getStatus` in turn.
    void callOnAndOn();
    void stop() { isCallingOn_ = false; }

    /// What to wait for until `process` has something to do.
    [[nodiscard]] pollfd interest() const;
    void process();
    /// Processes until the call under way is answered. False when that takes longer than 5 s.
    bool awaitAnswer();

    /// Asks for a floor, and has it when this returns. Throws std::runtime_error when it is refused or not
    /// answered within 5 s.
    void holdFloor(double percent);
    /// Pings once a second until `deadline`, so as not to be taken for gone. Throws in the same way.
    void keepInTouch(std::chrono::steady_clock::time_point deadline);

    [[nodiscard]] std::uint64_t answers() const { return answers_; }
    /// Of these, how many were errors.
    [[nodiscard]] std::uint64_t errors() const { return errors_; }

private:
    void callNext();
    void awaitConsent();
    void take(const sdbus::Error* error);
    template <typename... Results, typename... Arguments>
    void call(const std::string& method, Arguments... arguments);

    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IProxy> proxy_;
    bool isCallingOn_ = false;
    bool isWaiting_ = false;
    std::uint64_t answers_ = 0;
    std::uint64_t errors_ = 0;
};

}  // namespace corvane
