#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/hostile/RandomContents.h"
#include "tests/hostile/RawCaller.h"

namespace corvane {

/// Callers of the helper that mean no good. What they call in a form that the helper understands never asks
/// it to let go of the fans, which anybody may, so that a floor somebody else holds stays held. One thread.
class Attack {
public:
    using Clock = std::chrono::steady_clock;
    using Duration = Clock::duration;

    Attack(std::string bus, std::uint64_t seed) : bus_(std::move(bus)), contents_(seed) {}

    /// Messages of all kinds with any contents: calls and signals.
    void sendNonsense(Duration duration);
    /// Calls as fast as the bus takes them, whose answers nobody reads for long.
    void flood(Duration duration) { floodWith(&Attack::rightCall, duration); }
    /// The same with what costs the helper most: the lid's lock is asked of the login manager and let go.
    void toggleLid(Duration duration) { floodWith(&Attack::lidCall, duration); }
    /// Callers that are gone before their call is answered.
    void vanish(Duration duration);
    /// So many connections, a hundred and more at a time, with a call each that is waited for.
    void connect(int count);

    /// Sent, but for those of `connect`.
    [[nodiscard]] std::uint64_t messages() const { return messages_; }
    /// Calls of `connect` that the helper has answered without an error.
    [[nodiscard]] int answers() const { return answers_; }
    [[nodiscard]] std::uint64_t connections() const { return connections_; }

private:
    using Call = BusMessage (Attack::*)(RawCaller& caller);

    [[nodiscard]] RawCaller newCaller();
    void floodWith(Call call, Duration duration);
    [[nodiscard]] BusMessage lidCall(RawCaller& caller);
    [[nodiscard]] BusMessage anything(RawCaller& caller);
    [[nodiscard]] BusMessage wrongCall(RawCaller& caller);
    [[nodiscard]] BusMessage rightCall(RawCaller& caller);
    /// False when the bus has thrown the caller out.
    bool send(RawCaller& caller, sd_bus_message* message);

    std::string bus_;
    RandomContents contents_;
    bool isLidHeld_ = false;
    std::uint64_t messages_ = 0;
    int answers_ = 0;
    std::uint64_t connections_ = 0;
};

}  // namespace corvane
