#include "platform/linux/hwmon/AbsentFans.h"

#include <algorithm>
#include <string>

#include <fmt/format.h>

namespace corvane {

namespace {

std::string nameOf(const FanIdentity& fan) {
    return fmt::format("{} fan{} of {}", fan.chip.name, fan.channel, fan.chip.device);
}

bool holds(const HwmonInventory& inventory, const FanIdentity& fan) {
    return std::any_of(inventory.fans.begin(), inventory.fans.end(),
                       [&](const auto& known) { return known->custody.fan() == fan; });
}

}  // namespace

AbsentFans::AbsentFans(Sysfs& sysfs, FanJournal& journal, Log& log)
    : sysfs_(sysfs), journal_(journal), log_(log) {}

void AbsentFans::remember(const HwmonInventory& inventory) {
    std::erase_if(fans_, [&](const AbsentFan& fan) { return holds(inventory, fan.fan); });
    for (const JournalEntry& entry : journal_.entries()) {
        if (!holds(inventory, entry.fan) && !isRemembered(entry.fan)) {
            fans_.push_back({entry.fan, nullptr, nullptr});
            log_.write(fmt::format("Corvane daemon: WARNING: {} was not given back; waiting for its driver",
                                   nameOf(entry.fan)));
        }
    }
}

bool AbsentFans::isRemembered(const FanIdentity& fan) const {
    return std::any_of(fans_.begin(), fans_.end(),
                       [&](const AbsentFan& remembered) { return remembered.fan == fan; });
}

void AbsentFans::handBack() {
    if (fans_.empty()) {
        return;
    }
    const std::vector<ChipLocation> chips = scanChips(sysfs_);
    for (AbsentFan& fan : fans_) {
        if (fan.custody == nullptr) {
            lookFor(fan, chips);
        }
        if (fan.custody != nullptr && fan.custody->release() == SmcResult::success) {
            log_.write(fmt::format("Corvane daemon: {} given back", nameOf(fan.fan)));
        }
    }
    std::erase_if(fans_, [this](const AbsentFan& fan) { return journal_.find(fan.fan) == nullptr; });
}

void AbsentFans::lookFor(AbsentFan& fan, const std::vector<ChipLocation>& chips) {
    const auto isItsChip = [&](const ChipLocation& chip) { return chip.identity == fan.fan.chip; };
    // The entry must mean one fan only.
    if (std::count_if(chips.begin(), chips.end(), isItsChip) == 1) {
        fan.chip = std::make_unique<HwmonChip>(sysfs_, nullptr,
                                               *std::find_if(chips.begin(), chips.end(), isItsChip));
        fan.custody = std::make_unique<FanCustody>(FanCustody::Setting{nameOf(fan.fan), fan.fan},
                                                   makeFanDriver(*fan.chip, fan.fan.channel), journal_, log_);
    }
}

}  // namespace corvane
