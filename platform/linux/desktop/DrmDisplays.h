#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Displays.h"
#include "platform/Observers.h"
#include "platform/SerialQueue.h"
#include "platform/linux/desktop/UdevMonitor.h"

namespace corvane {

/// The displays at the connectors that the kernel knows, under class/drm. Main loop, Qt's.
///
/// A connector with a display has the status "connected", also while the display is mirrored, dark or asleep.
/// One whose status cannot be read is just going away. Built in are eDP, LVDS and DSI, the connectors of
/// panels. Never a display: Writeback, which is memory, and Unknown, a screen of which the kernel cannot say
/// what it is: behind the firmware's own frame buffer there may well be the panel. A virtual machine's screen
/// (Virtual) counts like a desktop computer's only monitor: as a display that is not built in.
class DrmDisplays final : public Displays {
public:
    /// How long a change is waited for to be over: docks and monitors announce themselves several times.
    static constexpr Duration settlingTime = std::chrono::milliseconds(250);

    /// `mainLoop` outlives the displays; `root` is an absolute path.
    explicit DrmDisplays(SerialQueue& mainLoop, std::string root = "/sys");

    /// None without a folder of connectors.
    [[nodiscard]] std::optional<std::vector<Display>> online() const override;

    /// Once `settlingTime` after the first of some events of udev's. Listens from the first observation on.
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override;

private:
    void announceSoon();

    SerialQueue& mainLoop_;
    std::string root_;
    Observers observers_;
    std::unique_ptr<Timer> settling_;
    std::optional<UdevMonitor> monitor_;
};

}  // namespace corvane
