#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/Log.h"
#include "platform/ResumeObserver.h"
#include "platform/SerialQueue.h"
#include "platform/linux/desktop/BusThread.h"

namespace corvane {

/// Hears of resumes from the login manager, on the system bus. Main loop.
///
/// It goes on with a login manager that comes up anew; when that happens between a suspend and its resume,
/// the new one says nothing of the resume, and its coming up counts as one. Without a login manager nothing
/// is heard, and one line in the log says so. So does one when the bus has gone away, which is then tried
/// again until it is back; a bus that was not there to begin with is not.
class LogindResumeObserver final : public ResumeObserver {
public:
    /// All references outlive the observer. `retry` is waited before a bus that was lost is tried again;
    /// tests have less time.
    LogindResumeObserver(BusThread& bus, SerialQueue& mainLoop, Log& log,
                         std::chrono::milliseconds retry = std::chrono::seconds(5));
    ~LogindResumeObserver() override;

    void observe(std::function<void()> afterResume) override;

private:
    class Listener;

    BusThread& bus_;
    SerialQueue& mainLoop_;
    Log& log_;
    std::chrono::milliseconds retry_;
    /// What is on its way to the main loop finds this gone when the observer is.
    std::shared_ptr<std::function<void()>> afterResume_;
    /// Belongs to the bus thread.
    std::shared_ptr<Listener> listener_;
};

}  // namespace corvane
