#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Displays.h"
#include "platform/Observers.h"
#include "platform/SerialQueue.h"

namespace corvane {

class MainLoopNotice;

/// The displays that a Mac's window server has online. Main loop.
class CoreGraphicsDisplays final : public Displays {
public:
    /// `mainLoop` outlives the displays.
    explicit CoreGraphicsDisplays(SerialQueue& mainLoop);
    ~CoreGraphicsDisplays() override;

    /// None when the window server cannot be asked.
    [[nodiscard]] std::optional<std::vector<Display>> online() const override;

    /// Once for what changed at one time, however many displays that were: the application hears of it then.
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override;

private:
    Observers observers_;
    std::unique_ptr<MainLoopNotice> notice_;
};

}  // namespace corvane
