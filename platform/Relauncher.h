#pragma once

namespace corvane {

/// Starts the application anew. Main loop.
class Relauncher {
public:
    Relauncher() = default;
    Relauncher(const Relauncher&) = delete;
    Relauncher& operator=(const Relauncher&) = delete;
    virtual ~Relauncher() = default;

    /// Sees to it that another instance starts, not before this one has let go of everything that there can
    /// be only one of. The caller ends this one then, whether or not that can be done: failures are logged.
    virtual void relaunch() = 0;
};

}  // namespace corvane
