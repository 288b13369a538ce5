#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslConfiguration>
#include <QUrl>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/SerialQueue.h"

namespace corvane {

/// One document on its way here. Lives on the main loop, Qt's; ends early when it is destroyed.
class HttpsDownload {
public:
    /// In one go; the same as for the client that the download belongs to.
    struct Request {
        QUrl url;
        Duration timeout{};
        /// In bytes.
        std::size_t largestBody = 0;
        /// None: the system's.
        std::optional<QSslConfiguration> tls;
    };

    /// `done` runs once, later, with the body or with none when there is no complete answer in time; it may
    /// not destroy this.
    HttpsDownload(SerialQueue& mainLoop, const Request& request,
                  std::function<void(std::optional<std::string>)> done);
    HttpsDownload(const HttpsDownload&) = delete;
    HttpsDownload& operator=(const HttpsDownload&) = delete;
    ~HttpsDownload();

private:
    void take();
    void finish(bool isComplete);
    [[nodiscard]] bool isWhole() const;

    std::size_t largestBody_;
    std::function<void(std::optional<std::string>)> done_;
    std::string body_;
    QNetworkAccessManager manager_;
    std::unique_ptr<QNetworkReply> reply_;
    std::unique_ptr<Timer> timeout_;
};

}  // namespace corvane
