#pragma once

#include "platform/Relauncher.h"

namespace corvane {

/// A relauncher that counts. Main loop.
class SimulatedRelauncher final : public Relauncher {
public:
    void relaunch() override { ++relaunches_; }

    [[nodiscard]] int relaunches() const { return relaunches_; }

private:
    int relaunches_ = 0;
};

}  // namespace corvane
