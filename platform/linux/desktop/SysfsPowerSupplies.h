#pragma once

#include <string>
#include <utility>

#include "platform/PowerSources.h"

namespace corvane {

/// The batteries as the kernel tells of them, under class/power_supply. Main loop; reads afresh each time,
/// which takes as long as the firmware takes to answer, some milliseconds as a rule.
///
/// A battery is a supply of type Battery that is present and does not belong to a device such as a mouse
/// (scope Device). They come in the order of their names, as from UPower. A UPS feeds the outlet, not this
/// computer, and is not one of them.
///
/// The charge is energy_now of energy_full; else charge_now of charge_full; else capacity of 100: few drivers
/// have all three, and a full charge of 0 is seen while firmware starts up. A charge below 0 or of more than
/// twice the full one is garbage; a little more than full is not, new batteries tell up to 110 %.
///
/// The mains feed the computer, and with it every battery draws from them,
/// - when an adapter is online: one of type Mains, USB or Wireless. A battery may even discharge then, beside
///   a weak adapter, be at rest ("Not charging") between the thresholds of its charge, or not know what it
///   does ("Unknown");
/// - when a battery is charging although no adapter says it is online: not every connector has an entry;
/// - when the system has no entry for an adapter at all and a battery is full or at rest.
/// They do not when a battery discharges and no adapter is online, which is the rule that UPower follows.
/// What remains is doubt, and counts as the battery: the rules that watch over it then hold.
class SysfsPowerSupplies final : public PowerSources {
public:
    /// `root` is an absolute path.
    explicit SysfsPowerSupplies(std::string root = "/sys") : root_(std::move(root)) {}

    [[nodiscard]] std::vector<std::optional<PowerSourceDescription>> descriptions() const override;

private:
    std::string root_;
};

}  // namespace corvane
