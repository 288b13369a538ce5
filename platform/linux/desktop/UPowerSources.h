#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/PowerSources.h"
#include "platform/linux/desktop/BusThread.h"
#include "platform/linux/desktop/SysfsPowerSupplies.h"
#include "platform/linux/desktop/UPowerClient.h"

namespace corvane {

/// The batteries as UPower tells of them; as the kernel does while UPower is absent, not read yet, hung or
/// talking nonsense, and while it knows no battery: none is hidden by a UPower that has not found it. Main
/// loop.
///
/// UPower is followed on the bus thread, and asking here only copies what is known of it. A battery draws
/// from the mains unless UPower says that the computer is on battery. Charges are in mWh, or thousandths of a
/// percent of a battery that tells no energy.
class UPowerSources final : public PowerSources {
public:
    /// `bus` outlives the sources; `sysfsRoot` is an absolute path. A UPower that takes longer than
    /// `patience` to answer counts as hung until it next has news.
    explicit UPowerSources(BusThread& bus, std::string sysfsRoot = "/sys", UPowerPatience patience = {});
    ~UPowerSources() override;

    [[nodiscard]] std::vector<std::optional<PowerSourceDescription>> descriptions() const override;

private:
    class Known;

    BusThread& bus_;
    SysfsPowerSupplies kernel_;
    std::shared_ptr<Known> known_;
    /// Belongs to the bus thread.
    std::shared_ptr<UPowerClient> client_;
};

}  // namespace corvane
