#pragma once

#include <functional>
#include <utility>

#include "platform/InstalledApplications.h"
#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// Applications that are installed when they are set; none to begin with. Main loop, whose queue carries the
/// replies.
class SimulatedInstalledApplications final : public InstalledApplications {
public:
    /// `mainLoop` outlives the applications.
    explicit SimulatedInstalledApplications(SerialQueue& mainLoop) : mainLoop_(mainLoop) {}

    void list(std::function<void(List)> reply) override {
        mainLoop_.async(lifetime_.bound([this, reply = std::move(reply)] { reply(list_); }));
    }

    void set(List list) { list_ = std::move(list); }

private:
    SerialQueue& mainLoop_;
    List list_;
    Lifetime lifetime_;
};

}  // namespace corvane
