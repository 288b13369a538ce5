#include "app/shell/StoredList.h"

#include <QJsonDocument>
#include <QJsonParseError>
#include <algorithm>
#include <span>

namespace corvane {

std::optional<StoredList::Data> StoredList::write(const QJsonArray& entries) {
    if (entries.size() > mostEntries) {
        return std::nullopt;
    }
    const QByteArray json = QJsonDocument(entries).toJson(QJsonDocument::Compact);
    const auto bytes = std::as_bytes(std::span(json));
    return bytes.size() > largestData ? std::nullopt : std::optional(Data(bytes.begin(), bytes.end()));
}

std::optional<QList<QJsonObject>> StoredList::read(const Data& data) {
    if (data.size() > largestData) {
        return std::nullopt;
    }
    QByteArray json(static_cast<qsizetype>(data.size()), Qt::Uninitialized);
    std::copy(data.begin(), data.end(), std::as_writable_bytes(std::span(json)).begin());
    const QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonArray array = document.array();
    if (!document.isArray() || array.size() > mostEntries) {
        return std::nullopt;
    }
    QList<QJsonObject> entries;
    for (const auto& entry : array) {
        if (!entry.isObject()) {
            return std::nullopt;
        }
        entries.append(entry.toObject());
    }
    return entries;
}

std::optional<QString> StoredList::text(const QJsonObject& entry, const QString& key) {
    const QJsonValue value = entry.value(key);
    const QString text = value.toString();
    return value.isString() && text.isValidUtf16() ? std::optional(text) : std::nullopt;
}

}  // namespace corvane
