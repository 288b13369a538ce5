#pragma once

#include <memory>

namespace corvane {

/// The events that a process gets from the system's other programs. One at a time; main thread. At its end
/// the test fails if somebody is still to be told of them.
class FakeAppleEvents {
public:
    FakeAppleEvents();
    FakeAppleEvents(const FakeAppleEvents&) = delete;
    FakeAppleEvents& operator=(const FakeAppleEvents&) = delete;
    ~FakeAppleEvents();

    /// AppKit has launched the application and says so.
    void finishLaunching();
    /// The user starts the application once more; false when nobody wants to know.
    bool reopen();

    class State;

private:
    std::unique_ptr<State> state_;
};

}  // namespace corvane
