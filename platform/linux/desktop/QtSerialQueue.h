#pragma once

#include <deque>
#include <memory>
#include <mutex>

#include "platform/SerialQueue.h"
#include "platform/linux/desktop/QtDescriptor.h"
#include "platform/linux/desktop/QtTimers.h"

namespace corvane {

/// The application's main loop as a serial queue: its work runs on the Qt event loop of the thread that made
/// it, between that loop's own events. Due timers and `syncAhead` get their turn between two pieces of
/// `async` work.
///
/// Made after the QCoreApplication and destroyed on the same thread; work that waits then is dropped. Work
/// runs only while the event loop does. An event loop that work itself runs goes on with the queue.
class QtSerialQueue final : public SerialQueue {
public:
    /// Throws std::system_error when the system has no descriptors left.
    QtSerialQueue();
    ~QtSerialQueue() override;

    void async(Work work) override;
    /// Never called from the queue's own thread, which would wait for itself.
    void sync(const Work& work) override;
    /// The same.
    void syncAhead(const Work& work) override;
    [[nodiscard]] std::unique_ptr<Timer> after(Duration delay, Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> at(WallTime time, Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> every(Duration first, Duration period, Work work) override;
    void sleep(Duration duration) override;
    [[nodiscard]] BootTime bootTime() const override;
    [[nodiscard]] WallTime wallTime() const override;

private:
    void runNext();

    std::mutex mutex_;
    std::deque<Work> ahead_;
    std::deque<Work> waiting_;
    /// Readable while work waits.
    QtDescriptor wakeUp_;

    QtTimers bootTimers_;
    QtTimers calendarTimers_;
};

}  // namespace corvane
