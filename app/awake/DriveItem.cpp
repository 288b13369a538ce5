#include "app/awake/DriveItem.h"

namespace corvane {

namespace {

const QString pathKey = QStringLiteral("path");
const QString nameKey = QStringLiteral("name");

std::optional<DriveItem> decodeEntry(const QJsonObject& entry) {
    const auto path = StoredList::text(entry, pathKey);
    const auto name = StoredList::text(entry, nameKey);
    return path && name ? std::optional(DriveItem{.path = *path, .name = *name}) : std::nullopt;
}

}  // namespace

std::optional<StoredList::Data> DriveList::encode(const QList<DriveItem>& drives) {
    QJsonArray entries;
    for (const DriveItem& drive : drives) {
        entries.append(QJsonObject{{pathKey, drive.path}, {nameKey, drive.name}});
    }
    return StoredList::write(entries);
}

QList<DriveItem> DriveList::decode(const StoredList::Data& data) {
    return StoredList::decode<DriveItem>(data, decodeEntry);
}

}  // namespace corvane
