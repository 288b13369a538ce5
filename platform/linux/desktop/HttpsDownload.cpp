#include "platform/linux/desktop/HttpsDownload.h"

#include <QByteArray>
#include <QNetworkProxy>
#include <QNetworkRequest>
#include <QVariant>
#include <utility>

namespace corvane {

namespace {

constexpr int mostRedirects = 5;
/// What Qt holds of an answer that was not taken yet, in bytes.
constexpr qint64 readBuffer = 65536;

QNetworkRequest requestFor(const HttpsDownload::Request& wanted) {
    QNetworkRequest request(wanted.url);
    if (wanted.tls) {
        request.setSslConfiguration(*wanted.tls);
    }
    // In place of what Qt would tell of itself and of the user's language.
    request.setRawHeader("User-Agent", "Corvane");
    request.setRawHeader("Accept", "*/*");
    request.setRawHeader("Accept-Language", "*");
    // Asking for it oneself, one also gets the answer as it is: nothing is unpacked that would grow.
    request.setRawHeader("Accept-Encoding", "identity");
    // From caches on the way, too.
    request.setRawHeader("Cache-Control", "no-cache");
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // The first address is https, and none that is less safe follows.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirects);
    return request;
}

/// Qt counts statuses of 400 and above as errors; the answer is an answer all the same.
bool isStatus(QNetworkReply::NetworkError error) {
    // 400 is an invalid operation to it.
    return error == QNetworkReply::NoError || error == QNetworkReply::ProtocolInvalidOperationError ||
           (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
           (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

}  // namespace

HttpsDownload::HttpsDownload(SerialQueue& mainLoop, const Request& request,
                             std::function<void(std::optional<std::string>)> done)
    : largestBody_(request.largestBody), done_(std::move(done)) {
    manager_.setProxy(QNetworkProxy::NoProxy);
    reply_.reset(manager_.get(requestFor(request)));
    reply_->setReadBufferSize(readBuffer);
    QObject::connect(reply_.get(), &QNetworkReply::readyRead, &manager_, [this] { take(); });
    QObject::connect(reply_.get(), &QNetworkReply::finished, &manager_, [this] { finish(isWhole()); });
    timeout_ = mainLoop.after(request.timeout, [this] { finish(false); });
}

HttpsDownload::~HttpsDownload() {
    reply_->disconnect(&manager_);
    reply_->abort();
}

void HttpsDownload::take() {
    const QByteArray more = reply_->readAll();
    if (static_cast<std::size_t>(more.size()) > largestBody_ - body_.size()) {
        finish(false);
        return;
    }
    body_.append(more.constData(), static_cast<std::size_t>(more.size()));
}

bool HttpsDownload::isWhole() const {
    if (!isStatus(reply_->error()) ||
        !reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid()) {
        return false;
    }
    const QVariant length = reply_->header(QNetworkRequest::ContentLengthHeader);
    return !length.isValid() || length.toULongLong() == body_.size();
}

void HttpsDownload::finish(bool isComplete) {
    if (!done_) {
        return;
    }
    timeout_.reset();
    std::optional<std::string> body;
    if (isComplete) {
        body = std::move(body_);
    }
    std::exchange(done_, nullptr)(std::move(body));
}

}  // namespace corvane
