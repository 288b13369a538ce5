#pragma once

#include <functional>
#include <memory>

#include "platform/Observers.h"
#include "platform/SerialQueue.h"
#include "platform/ThermalStateMonitor.h"

namespace corvane {

class MainLoopNotice;

/// The thermal state of the Mac, as the system tells it to every process. Main loop.
class MacThermalState final : public ThermalStateMonitor {
public:
    /// `mainLoop` outlives the monitor.
    explicit MacThermalState(SerialQueue& mainLoop);
    ~MacThermalState() override;

    /// Asked for afresh each time: a notice that is late or lost hides nothing.
    [[nodiscard]] ThermalState state() const override;
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override;

private:
    void readAgain();

    /// Read before the notice is followed: the system posts none to who has never asked.
    ThermalState announced_;
    Observers observers_;
    std::unique_ptr<MainLoopNotice> notice_;
};

}  // namespace corvane
