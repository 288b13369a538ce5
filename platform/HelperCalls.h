#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "platform/SerialQueue.h"
#include "platform/StatusRecord.h"

namespace corvane {

/// What the helper answers to everything but a request for its status.
struct TextAnswer {
    bool ok = false;
    std::string text;
};

using HelperAnswer = std::variant<TextAnswer, StatusRecord>;

/// One call of a connection to the helper; later calls have larger numbers.
using CallId = std::uint64_t;

/// The calls of a connection to the helper that have not ended, each with its time. Main loop.
///
/// The time is counted in rounds, of which a queue that stood still makes up for one only: while the machine
/// sleeps or the main loop is busy it does not pass, and a reply that arrived meanwhile is heard before its
/// call counts as late.
class HelperCalls {
public:
    using Deliver = std::function<void(HelperAnswer answer)>;

    struct Call {
        Deliver deliver;
        int roundsLeft;
        std::unique_ptr<Timer> timer;
    };
    /// Calls that have ended. What they hold may be the connection itself: whoever ends them keeps them until
    /// it needs that no more.
    using Ended = std::map<CallId, Call>;

    /// Calls under way beyond these are refused. The application has a handful.
    static constexpr std::size_t maxUnderWay = 64;

    /// `late` hears of a call, still under way, when its `timeout` is over. `mainLoop` outlives this.
    HelperCalls(SerialQueue& mainLoop, Duration timeout, std::function<void(CallId call)> late)
        : mainLoop_(mainLoop), timeout_(timeout), late_(std::move(late)) {}

    /// Nothing when too many are under way.
    [[nodiscard]] std::optional<CallId> begin(Deliver deliver);

    /// Ends the call with its answer, unless it has ended.
    void answer(CallId call, HelperAnswer answer);

    /// Ends the call; empty when it has ended.
    [[nodiscard]] Ended end(CallId call);
    /// Ends those that were begun up to `last`.
    [[nodiscard]] Ended endUpTo(CallId last);
    [[nodiscard]] Ended endAll() { return std::exchange(calls_, {}); }

private:
    void endRound(CallId call);

    SerialQueue& mainLoop_;
    Duration timeout_;
    std::function<void(CallId call)> late_;
    CallId last_ = 0;
    std::map<CallId, Call> calls_;
};

}  // namespace corvane
