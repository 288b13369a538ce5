#pragma once

#include "tests/platform/macos/fakes/Current.h"
#include "tests/platform/macos/fakes/Foundation/FakeQueue.h"

namespace corvane {

/// How hot the Mac says it is, as its number has it; 0 to begin with. One at a time.
class FakeThermalState {
public:
    /// Posts a notice, from a queue of the system's own, to a process that has asked before, be it a change
    /// or not.
    void set(int state);

    // For the process' information.
    [[nodiscard]] int read();

private:
    int state_ = 0;
    bool isAskedFor_ = false;
    FakeQueue queue_;
    Current<FakeThermalState> current_{*this};
};

}  // namespace corvane
