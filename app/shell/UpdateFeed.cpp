#include "app/shell/UpdateFeed.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace corvane {

std::optional<UpdateFeed> UpdateFeed::parse(const std::string& body) {
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(body));
    if (!document.isObject()) {
        return std::nullopt;
    }
    const QJsonObject feed = document.object();
    const QJsonValue shortVersion = feed.value(QStringLiteral("shortVersion"));
    const QJsonValue version = shortVersion.isString() ? shortVersion : feed.value(QStringLiteral("version"));
    if (!version.isString()) {
        return std::nullopt;
    }
    const QUrl url(feed.value(QStringLiteral("url")).toString(), QUrl::StrictMode);
    return UpdateFeed{.version = version.toString(),
                      .url = url.isValid() ? url : QUrl(),
                      .notes = feed.value(QStringLiteral("notes")).toString()};
}

}  // namespace corvane
