#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "platform/HttpsClient.h"
#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"

namespace corvane {

class HttpsTransfer;

/// Fetches documents with the system's own network classes, by the proxy that the user has configured, if
/// any. Main loop.
class MacHttpsClient final : public HttpsClient {
public:
    /// `mainLoop` outlives the client.
    explicit MacHttpsClient(SerialQueue& mainLoop);
    ~MacHttpsClient() override;

    void get(const Request& request, Done done) override;

private:
    SerialQueue& mainLoop_;
    std::uint64_t lastNumber_ = 0;
    /// By number.
    std::map<std::uint64_t, std::unique_ptr<HttpsTransfer>> transfers_;
    Lifetime lifetime_;
};

}  // namespace corvane
