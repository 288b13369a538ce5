#pragma once

#include <cstddef>
#include <vector>

#include <IOKit/IOKitLib.h>

#include "platform/SmcConnection.h"
#include "platform/simulated/SimulatedMac.h"
#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The kernel's AppleSMC service in front of a simulated Mac. It takes nothing but whole records of 80 bytes
/// for its one method. One at a time, one thread at a time.
class FakeSmcService {
public:
    /// `mac` outlives the service, which is there for as long as the Mac says so.
    explicit FakeSmcService(SimulatedMac& mac) : mac_(mac) {}
    FakeSmcService(const FakeSmcService&) = delete;
    FakeSmcService& operator=(const FakeSmcService&) = delete;
    ~FakeSmcService() = default;

    /// Whether this process is root's, which writing takes; it is to begin with.
    void setPrivileged(bool isPrivileged) { isPrivileged_ = isPrivileged; }
    /// From now on no connection can be opened; `kIOReturnSuccess` ends that.
    void refuseToOpen(IOReturn code) { openCode_ = code; }
    /// From now on every exchange ends with this code; `kIOReturnSuccess` ends that.
    void failExchanges(IOReturn code) { exchangeCode_ = code; }
    /// From now on answers are cut off after so many bytes.
    void cutAnswersOffAt(std::size_t size) { answerSize_ = size; }

    [[nodiscard]] std::size_t openConnections() const;

    // For IOKit's functions.
    [[nodiscard]] bool isThere() const { return mac_.isSmcPresent(); }
    IOReturn open(io_connect_t& connection);
    IOReturn exchange(io_connect_t connection, const void* input, void* output, std::size_t& outputSize);

private:
    SimulatedMac& mac_;
    bool isPrivileged_ = true;
    IOReturn openCode_ = kIOReturnSuccess;
    IOReturn exchangeCode_ = kIOReturnSuccess;
    std::size_t answerSize_ = sizeof(SmcRecord);
    /// Closed ones too.
    std::vector<io_connect_t> connections_;
    Current<FakeSmcService> current_{*this};
};

}  // namespace corvane
