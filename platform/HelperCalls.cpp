#include "platform/HelperCalls.h"

namespace corvane {

namespace {

constexpr int roundsOfACall = 5;

}  // namespace

std::optional<CallId> HelperCalls::begin(Deliver deliver) {
    if (calls_.size() >= maxUnderWay) {
        return std::nullopt;
    }
    const CallId call = ++last_;
    const Duration round = timeout_ / roundsOfACall;
    calls_.emplace(call, Call{std::move(deliver), roundsOfACall,
                              mainLoop_.every(round, round, [this, call] { endRound(call); })});
    return call;
}

void HelperCalls::endRound(CallId call) {
    if (--calls_.at(call).roundsLeft == 0) {
        // A copy: what it does may destroy this.
        const auto late = late_;
        late(call);
    }
}

void HelperCalls::answer(CallId call, HelperAnswer answer) {
    if (const auto ended = calls_.extract(call)) {
        ended.mapped().deliver(std::move(answer));
    }
}

HelperCalls::Ended HelperCalls::end(CallId call) {
    Ended ended;
    ended.insert(calls_.extract(call));
    return ended;
}

HelperCalls::Ended HelperCalls::endUpTo(CallId last) {
    Ended ended;
    while (!calls_.empty() && calls_.begin()->first <= last) {
        ended.insert(calls_.extract(calls_.begin()));
    }
    return ended;
}

}  // namespace corvane
