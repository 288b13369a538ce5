#include "tests/support/TlsServer.h"

#include <QHostAddress>
#include <QMetaObject>
#include <QSslConfiguration>
#include <utility>

#include <fmt/format.h>

namespace corvane {

/// Hands over what it accepts, on its thread.
class TlsServer::Listener final : public QTcpServer {
public:
    explicit Listener(std::function<void(QSslSocket&)> accept) : accept_(std::move(accept)) {}

private:
    void incomingConnection(qintptr descriptor) override {
        // Owned by the listener.
        auto* const socket = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        accept_(*socket);
    }

    std::function<void(QSslSocket&)> accept_;
};

TlsServer::TlsServer(const TlsIdentity& identity, std::map<std::string, Handler> handlers, Manner manner)
    : handlers_(std::move(handlers)) {
    onThread_.moveToThread(&thread_);
    thread_.start();
    run([&] {
        listener_ = std::make_unique<Listener>(
            [this, identity, manner](QSslSocket& socket) { accept(socket, identity, manner); });
        listener_->listen(QHostAddress::LocalHost);
        port_ = listener_->serverPort();
    });
}

TlsServer::~TlsServer() {
    run([this] { listener_.reset(); });
    thread_.quit();
    thread_.wait();
}

/// Runs `work` on the thread and waits for it.
void TlsServer::run(const std::function<void()>& work) {
    QMetaObject::invokeMethod(&onThread_, work, Qt::BlockingQueuedConnection);
}

std::string TlsServer::url(const std::string& path, const std::string& scheme) const {
    return fmt::format("{}://localhost:{}{}", scheme, port_, path);
}

void TlsServer::accept(QSslSocket& socket, const TlsIdentity& identity, Manner manner) {
    if (manner == Manner::rude) {
        QObject::connect(&socket, &QIODevice::readyRead, &socket, &QAbstractSocket::abort);
        return;
    }
    QObject::connect(&socket, &QIODevice::readyRead, &socket,
                     [this, &socket, head = std::string()]() mutable { take(socket, head); });
    if (manner == Manner::encrypted) {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(identity.certificate);
        configuration.setPrivateKey(identity.key);
        configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
        socket.setSslConfiguration(configuration);
        socket.startServerEncryption();
    }
}

void TlsServer::take(QSslSocket& socket, std::string& head) {
    head += socket.readAll().toStdString();
    if (head.find("\r\n\r\n") == std::string::npos) {
        return;
    }
    const std::size_t begin = head.find(' ') + 1;
    const auto handler = handlers_.find(head.substr(begin, head.find(' ', begin) - begin));
    requests_.add(std::exchange(head, {}));
    if (handler != handlers_.end()) {
        handler->second(socket);
    }
}

TlsServer::Handler TlsServer::answer(const std::string& head, const std::string& body) {
    return [head, body](QSslSocket& socket) {
        socket.write(QByteArray::fromStdString(fmt::format("HTTP/1.1 {}\r\n\r\n{}", head, body)));
        socket.disconnectFromHost();
    };
}

TlsServer::Handler TlsServer::redirect(const std::string& to) {
    return answer(fmt::format("302 Found\r\nLocation: {}\r\nContent-Length: 4", to), "gone");
}

TlsServer::Handler TlsServer::endless(const std::string& begin, const std::string& more) {
    return [begin, more](QSslSocket& socket) {
        constexpr qint64 ahead = 1 << 20;
        const auto writeMore = [&socket, block = QByteArray::fromStdString(more)] {
            if (socket.isOpen() && socket.bytesToWrite() + socket.encryptedBytesToWrite() < ahead) {
                socket.write(block);
            }
        };
        QObject::connect(&socket, &QSslSocket::encryptedBytesWritten, &socket, writeMore);
        socket.write(QByteArray::fromStdString(begin));
        writeMore();
    };
}

}  // namespace corvane
