#pragma once

#include <cstdint>

#include "platform/SmcConnection.h"

namespace corvane {

/// The System Management Controller of a Mac: the kernel's AppleSMC service. Codes are IOKit's own. Writing
/// takes root; the service says so with each write, not as it is opened.
class IoKitSmc final : public SmcConnection {
public:
    IoKitSmc() = default;
    ~IoKitSmc() override;

    std::int32_t open() override;
    std::int32_t exchange(SmcRecord& record) override;

private:
    /// An `io_connect_t`, 0 for none.
    std::uint32_t connection_ = 0;
};

}  // namespace corvane
