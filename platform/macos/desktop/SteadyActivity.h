#pragma once

#include <memory>

namespace corvane {

/// Keeps the system from slowing the process down while none of its windows is seen, as it does with
/// applications that seem to do nothing: the timers of one that speaks to the fans' helper every second must
/// not be late by several, for the helper takes silence for the application's end. The computer may sleep all
/// the same. Lasts as long as the object. Main loop.
class SteadyActivity {
public:
    SteadyActivity();
    SteadyActivity(const SteadyActivity&) = delete;
    SteadyActivity& operator=(const SteadyActivity&) = delete;
    ~SteadyActivity();

private:
    struct Token;

    std::unique_ptr<Token> token_;
};

}  // namespace corvane
