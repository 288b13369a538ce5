#pragma once

#include <optional>

namespace corvane {

/// Qt's event loop of the main thread, as an application's main loop runs and ends it. Made after the
/// QCoreApplication. Main thread, except `exit`, which any thread may call.
class QtEventLoop {
public:
    /// Runs until `exit`, or until the desktop ends the application, and returns the status.
    int run();

    /// Makes `run` return `status`, also when it has not begun yet; the first call wins.
    void exit(int status);

private:
    std::optional<int> status_;
};

}  // namespace corvane
