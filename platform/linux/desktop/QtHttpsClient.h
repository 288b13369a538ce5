#pragma once

#include <QSslConfiguration>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "platform/HttpsClient.h"
#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"

namespace corvane {

class HttpsDownload;

/// Fetches documents with Qt's network classes. Main loop, Qt's.
///
/// At most 5 redirects, all to https. Each request has a manager of its own, so that nothing of one is known
/// to the next and an application that asks nothing has no network classes, threads and certificates in
/// memory. The head of an answer is Qt's to hold, and only time bounds it. It goes straight to the server: a
/// configured proxy may be looked for on the network first, which would hold up the main loop.
class QtHttpsClient final : public HttpsClient {
public:
    /// `mainLoop` outlives the client. `tls` says whom to trust; none: whom the system trusts.
    explicit QtHttpsClient(SerialQueue& mainLoop, std::optional<QSslConfiguration> tls = std::nullopt);
    ~QtHttpsClient() override;

    void get(const Request& request, Done done) override;

private:
    SerialQueue& mainLoop_;
    std::optional<QSslConfiguration> tls_;
    std::uint64_t lastNumber_ = 0;
    /// By number.
    std::map<std::uint64_t, std::unique_ptr<HttpsDownload>> downloads_;
    Lifetime lifetime_;
};

}  // namespace corvane
