#pragma once

#include <memory>
#include <vector>

#include "platform/Log.h"
#include "platform/linux/hwmon/FanCustody.h"
#include "platform/linux/hwmon/FanJournal.h"
#include "platform/linux/hwmon/HwmonInventory.h"

namespace corvane {

/// Fans of the journal whose chip was not there when the inventory was taken: handed back as soon as it is,
/// and never offered. One thread.
class AbsentFans {
public:
    /// All arguments outlive it.
    AbsentFans(Sysfs& sysfs, FanJournal& journal, Log& log);

    /// Remembers the journal's fans that are not in `inventory`, and names those in the log that it did not
    /// know of before.
    void remember(const HwmonInventory& inventory);

    [[nodiscard]] bool isEmpty() const { return fans_.empty(); }

    /// Hands back those whose chip has appeared. To be repeated until it is empty.
    void handBack();

private:
    struct AbsentFan {
        FanIdentity fan;
        /// Both null until the chip appears.
        std::unique_ptr<HwmonChip> chip;
        std::unique_ptr<FanCustody> custody;
    };

    [[nodiscard]] bool isRemembered(const FanIdentity& fan) const;
    void lookFor(AbsentFan& fan, const std::vector<ChipLocation>& chips);

    Sysfs& sysfs_;
    FanJournal& journal_;
    Log& log_;
    std::vector<AbsentFan> fans_;
};

}  // namespace corvane
