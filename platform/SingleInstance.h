#pragma once

#include <functional>
#include <string>

namespace corvane {

/// What a start of the application is.
enum class StartRole {
    /// The only one: it goes on.
    first,
    /// There is another one, which opens its panel now: this one ends.
    second,
    /// There is another one, which does not answer: this one ends, with an error.
    unanswered,
};

struct Start {
    StartRole role = StartRole::first;
    /// With `unanswered`: what to tell the user, in English.
    std::string error;

    bool operator==(const Start&) const = default;
};

/// Sees to it that the application runs once for each user. Main thread.
class SingleInstance {
public:
    SingleInstance() = default;
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    /// The next start is a first one again.
    virtual ~SingleInstance() = default;

    /// Tells what this start is. Called once, before the main loop runs; takes up to 5 s when there is
    /// another one. From then on a first one's `openRequested` runs on the main loop for each later start. A
    /// system that gives no way to find out makes every start a first one.
    [[nodiscard]] virtual Start claim(std::function<void()> openRequested) = 0;
};

}  // namespace corvane
