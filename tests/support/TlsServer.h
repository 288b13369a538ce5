#pragma once

#include <QObject>
#include <QSslSocket>
#include <QTcpServer>
#include <QThread>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "tests/support/Notes.h"
#include "tests/support/TlsCertificates.h"

namespace corvane {

/// A web server at this machine's own address that answers as badly as it is told to. It has a thread of its
/// own.
class TlsServer {
public:
    /// Answers on the server's thread, once the head of a request has come: `socket` is the server's, and
    /// closes when the handler does so or with the server.
    using Handler = std::function<void(QSslSocket& socket)>;
    enum class Manner {
        encrypted,
        /// No encryption at all, on a port where it is expected.
        plain,
        /// Cuts the connection as soon as the client has said the first word.
        rude
    };

    /// Listens from now on. Handlers by path; others are never answered.
    TlsServer(const TlsIdentity& identity, std::map<std::string, Handler> handlers,
              Manner manner = Manner::encrypted);
    TlsServer(const TlsServer&) = delete;
    TlsServer& operator=(const TlsServer&) = delete;
    ~TlsServer();

    [[nodiscard]] std::uint16_t port() const { return port_; }
    [[nodiscard]] std::string url(const std::string& path, const std::string& scheme = "https") const;

    /// The head of each request that arrived whole, line ends as they came.
    [[nodiscard]] const Notes<std::string>& requests() const { return requests_; }

    /// An answer that closes the connection.
    static Handler answer(const std::string& head, const std::string& body);
    static Handler redirect(const std::string& to);
    /// Writes `begin`, and `more` again and again as long as the client takes it.
    static Handler endless(const std::string& begin, const std::string& more);

private:
    class Listener;

    void run(const std::function<void()>& work);
    void accept(QSslSocket& socket, const TlsIdentity& identity, Manner manner);
    void take(QSslSocket& socket, std::string& head);

    std::map<std::string, Handler> handlers_;
    Notes<std::string> requests_;
    std::uint16_t port_ = 0;
    QThread thread_;
    QObject onThread_;
    /// Belongs to the thread.
    std::unique_ptr<Listener> listener_;
};

}  // namespace corvane
