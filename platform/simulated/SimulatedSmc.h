#pragma once

#include "platform/SmcConnection.h"
#include "platform/simulated/SimulatedMac.h"

namespace corvane {

/// The way to a simulated machine's keys. Without an SMC service both calls answer `noService`.
class SimulatedSmc final : public SmcConnection {
public:
    /// `mac` outlives the connection.
    explicit SimulatedSmc(SimulatedMac& mac) : mac_(mac) {}

    std::int32_t open() override { return mac_.isSmcPresent() ? 0 : noService; }

    std::int32_t exchange(SmcRecord& record) override {
        if (!mac_.isSmcPresent()) {
            return noService;
        }
        answerFromTable(mac_, record);
        return 0;
    }

private:
    SimulatedMac& mac_;
};

}  // namespace corvane
