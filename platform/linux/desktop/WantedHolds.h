#pragma once

#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "platform/PowerAssertions.h"
#include "platform/linux/desktop/InhibitMethod.h"

namespace corvane {

/// A wish that the computer does not idle, and why, as people read it.
struct PowerHold {
    IdleKind kind;
    std::string reason;
};

using PowerHolds = std::map<PowerAssertions::Id, PowerHold>;

/// The holds that one thread wants and another one takes. What comes and goes while the other one is busy
/// leaves nothing behind. Any thread.
class WantedHolds {
public:
    /// True when the other thread is to be told that there is news; not before it has read the former news.
    [[nodiscard]] bool add(PowerAssertions::Id id, const PowerHold& hold) {
        const std::lock_guard lock(mutex_);
        holds_.insert_or_assign(id, hold);
        return !std::exchange(isNews_, true);
    }
    [[nodiscard]] bool remove(PowerAssertions::Id id) {
        const std::lock_guard lock(mutex_);
        return holds_.erase(id) > 0 && !std::exchange(isNews_, true);
    }

    /// Brings `known` up to date.
    void readInto(PowerHolds& known) {
        const std::lock_guard lock(mutex_);
        if (std::exchange(isNews_, false)) {
            known = holds_;
        }
    }

private:
    std::mutex mutex_;
    PowerHolds holds_;
    bool isNews_ = false;
};

}  // namespace corvane
