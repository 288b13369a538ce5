#pragma once

#include <functional>
#include <memory>

#include "platform/Observers.h"
#include "platform/RunningApplications.h"
#include "platform/SerialQueue.h"

namespace corvane {

class MainLoopNotice;

/// The applications that the user's workspace runs. Main loop.
class MacRunningApplications final : public RunningApplications {
public:
    /// `mainLoop` outlives the applications.
    explicit MacRunningApplications(SerialQueue& mainLoop);
    ~MacRunningApplications() override;

    [[nodiscard]] Identifiers identifiers() const override;
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override;

private:
    Observers observers_;
    std::unique_ptr<MainLoopNotice> launch_;
    std::unique_ptr<MainLoopNotice> quit_;
};

}  // namespace corvane
