#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The web as the system's network classes show it: servers that answer what they are told to. Their messages
/// come from a queue of the session's own. One at a time; at its end the test fails if a session was not
/// invalidated, which keeps its delegate.
class FakeWeb {
public:
    struct Answer {
        /// In these pieces.
        std::vector<std::string> body = {};
        int status = 200;
        /// Where a redirect leads.
        std::optional<std::string> location = std::nullopt;
        /// None: the server does not say.
        std::optional<long long> announcedLength = std::nullopt;
        /// The connection breaks at the end.
        bool breaks = false;
        /// Nothing comes, not even an end.
        bool hangs = false;
        /// Of something other than a web server.
        bool isHttp = true;
    };

    /// As a session was asked for it.
    struct Request {
        std::string url;
        bool ignoresCache;
        bool hasCookies;
        double timeout;
        std::map<std::string, std::string> headers;
        /// Of the session: nothing that outlives it, or tells who the user is.
        bool isSessionBlank;
    };

    FakeWeb();
    FakeWeb(const FakeWeb&) = delete;
    FakeWeb& operator=(const FakeWeb&) = delete;
    ~FakeWeb();

    /// What an address answers; any other one breaks the connection.
    void set(const std::string& url, Answer answer);

    /// Oldest first, redirects left out.
    [[nodiscard]] const std::vector<Request>& requests() const;
    /// The addresses that were really asked, redirects among them.
    [[nodiscard]] const std::vector<std::string>& asked() const;
    /// Sessions that were not invalidated yet.
    [[nodiscard]] int sessions() const;

    class State;

private:
    std::unique_ptr<State> state_;
};

}  // namespace corvane
