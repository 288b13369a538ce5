#include "platform/linux/desktop/HttpsUrl.h"

#include <QByteArray>

namespace corvane {

namespace {

/// In bytes; servers take no more than some thousands.
constexpr std::size_t longestUrl = 8192;

}  // namespace

std::optional<QUrl> httpsUrl(const std::string& text) {
    if (text.size() > longestUrl) {
        return std::nullopt;
    }
    QUrl url = QUrl::fromEncoded(QByteArray::fromStdString(text), QUrl::StrictMode);
    const bool isFit = url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty() &&
                       url.userInfo().isEmpty();
    return isFit ? std::optional(std::move(url)) : std::nullopt;
}

}  // namespace corvane
