#pragma once

#include <functional>

namespace corvane {

/// The main thread's loop, and the signals that end the process.
///
/// Everything here belongs to the main thread, except `exit`, which any thread may call.
class MainLoop {
public:
    MainLoop() = default;
    MainLoop(const MainLoop&) = delete;
    MainLoop& operator=(const MainLoop&) = delete;
    virtual ~MainLoop() = default;

    /// From now on no termination signal ends the process: those that arrive wait for
    /// `onTerminationSignal`. Called before any thread is started.
    virtual void holdTerminationSignals() = 0;

    /// Runs `handler` on the main loop for each termination signal, waiting ones included.
    virtual void onTerminationSignal(std::function<void()> handler) = 0;

    /// Runs until `exit` and returns its status.
    virtual int run() = 0;

    /// Makes `run` return `status`; the first call wins.
    virtual void exit(int status) = 0;
};

}  // namespace corvane
