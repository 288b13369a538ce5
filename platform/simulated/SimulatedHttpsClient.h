#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/HttpsClient.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// A web whose every address answers what it is told to; nothing to begin with. Main loop, whose queue
/// carries the answers.
class SimulatedHttpsClient final : public HttpsClient {
public:
    /// `mainLoop` outlives the client.
    explicit SimulatedHttpsClient(SerialQueue& mainLoop) : mainLoop_(mainLoop) {}

    void get(const Request& request, Done done) override {
        requests_.push_back(request);
        mainLoop_.async([body = body_, done = std::move(done)] { done(body); });
    }

    /// None: requests fail.
    void setBody(std::optional<std::string> body) { body_ = std::move(body); }

    /// Oldest first.
    [[nodiscard]] const std::vector<Request>& requests() const { return requests_; }

private:
    SerialQueue& mainLoop_;
    std::optional<std::string> body_;
    std::vector<Request> requests_;
};

}  // namespace corvane
