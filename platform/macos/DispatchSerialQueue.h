#pragma once

#include <memory>
#include <string_view>

#include "platform/SerialQueue.h"

namespace corvane {

/// A serial queue over one of Dispatch's. Due timers and `syncAhead` get their turn between two pieces of
/// `async` work: of the waiting work Dispatch knows only the next piece.
///
/// Timers keep to the continuous clock through any sleep of the computer (see `BootAlarm`).
class DispatchSerialQueue final : public SerialQueue {
public:
    struct OfMainThread {};

    /// A queue of its own. `label` is what tools show.
    explicit DispatchSerialQueue(std::string_view label);
    /// The main thread's queue, which the main run loop empties. Made and destroyed on the main thread, which
    /// calls neither `sync` nor `syncAhead`.
    explicit DispatchSerialQueue(OfMainThread mainThread);
    /// Ends after the work under way; work that waits is dropped.
    ~DispatchSerialQueue() override;

    void async(Work work) override;
    void sync(const Work& work) override;
    void syncAhead(const Work& work) override;
    [[nodiscard]] std::unique_ptr<Timer> after(Duration delay, Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> at(WallTime time, Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> every(Duration first, Duration period, Work work) override;
    void sleep(Duration duration) override;
    [[nodiscard]] BootTime bootTime() const override;
    [[nodiscard]] WallTime wallTime() const override;

private:
    class Core;

    /// Shared with what Dispatch has under way.
    std::shared_ptr<Core> core_;
};

}  // namespace corvane
