#pragma once

#include <memory>

#include "platform/Console.h"
#include "platform/SerialQueue.h"
#include "platform/SmcConnection.h"

namespace corvane {

/// Waits that a termination signal cuts short, for commands that must tidy up before they end.
class InterruptiblePause {
public:
    InterruptiblePause() = default;
    InterruptiblePause(const InterruptiblePause&) = delete;
    InterruptiblePause& operator=(const InterruptiblePause&) = delete;
    virtual ~InterruptiblePause() = default;

    /// From now on termination signals do not end the process; they cut pauses short.
    virtual void holdTerminationSignals() = 0;

    /// Waits. False when a termination signal has arrived, now or earlier since they are held.
    virtual bool pause(Duration duration) = 0;

    /// Waits to the end, whatever has arrived, for tidying up after a signal. Termination signals are held.
    virtual void wait(Duration duration) = 0;

    /// Time since an arbitrary point, for measuring how long something took.
    [[nodiscard]] virtual BootTime bootTime() const = 0;
};

/// Everything a diagnostic command needs of a platform; single-threaded.
class CommandPlatform {
public:
    CommandPlatform() = default;
    CommandPlatform(const CommandPlatform&) = delete;
    CommandPlatform& operator=(const CommandPlatform&) = delete;
    virtual ~CommandPlatform() = default;

    virtual Console& console() = 0;
    virtual InterruptiblePause& pause() = 0;
    [[nodiscard]] virtual bool isRoot() const = 0;
    /// Called once. The platform outlives the connection.
    virtual std::unique_ptr<SmcConnection> makeSmcConnection() = 0;
};

}  // namespace corvane
