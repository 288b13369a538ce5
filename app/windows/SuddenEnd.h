#pragma once

namespace corvane {

/// While one is there, exit() on the thread that made it ends the process at once, with EXIT_FAILURE. Qt
/// calls it in the middle of its event loop when the display is lost: what is static would be destroyed
/// beneath the threads at work.
class SuddenEnd {
public:
    SuddenEnd();
    ~SuddenEnd();
    SuddenEnd(const SuddenEnd&) = delete;
    SuddenEnd& operator=(const SuddenEnd&) = delete;
};

}  // namespace corvane
