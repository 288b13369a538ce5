#pragma once

#include <functional>
#include <memory>

#include "platform/SerialQueue.h"

namespace corvane {

/// What the system asks of an application that the user has started once more, in place of starting a second
/// process: from the Finder, the Dock, the launcher. Main loop.
class ReopenRequests {
public:
    /// `requested` runs on the main loop for each of them, once the application has been launched, as only
    /// its user interface knows. `mainLoop` outlives the requests.
    ReopenRequests(SerialQueue& mainLoop, std::function<void()> requested);
    ReopenRequests(const ReopenRequests&) = delete;
    ReopenRequests& operator=(const ReopenRequests&) = delete;
    ~ReopenRequests();

private:
    class Handler;

    std::unique_ptr<Handler> handler_;
};

}  // namespace corvane
