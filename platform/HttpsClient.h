#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/SerialQueue.h"

namespace corvane {

/// Fetches documents from web servers. Belongs to the main loop and does not block it.
class HttpsClient {
public:
    struct Request {
        /// An https address.
        std::string url;
        /// From the call to the last byte of the answer.
        Duration timeout{};
        /// Of the answer's body, in bytes.
        std::size_t largestBody = 0;
    };
    /// The body, or none when there was no complete answer.
    using Done = std::function<void(std::optional<std::string> body)>;

    HttpsClient() = default;
    HttpsClient(const HttpsClient&) = delete;
    HttpsClient& operator=(const HttpsClient&) = delete;
    virtual ~HttpsClient() = default;

    /// Gets a document from its server, never from a cache, and says nothing about the user. Only https, for
    /// redirects too, with certificates that the system trusts. `done` runs later on the main loop, once, or
    /// never when the client is gone by then. An answer of any status counts when it is complete.
    virtual void get(const Request& request, Done done) = 0;
};

}  // namespace corvane
