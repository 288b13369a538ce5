#include "app/automation/TriggerApp.h"

namespace corvane {

namespace {

const QString bundleIDKey = QStringLiteral("bundleID");
const QString nameKey = QStringLiteral("name");
const QString coolingKey = QStringLiteral("cooling");

/// None of the outer kind for what is no cooling at all.
std::optional<std::optional<CoolingProfile::Kind>> decodeCooling(const QJsonObject& entry) {
    const QJsonValue value = entry.value(coolingKey);
    if (value.isUndefined() || value.isNull()) {
        return std::optional<CoolingProfile::Kind>();
    }
    const auto kind = CoolingProfile::fromRawValue(value.toString().toStdString());
    return kind ? std::optional(kind) : std::nullopt;
}

std::optional<TriggerApp> decodeEntry(const QJsonObject& entry) {
    const auto bundleID = StoredList::text(entry, bundleIDKey);
    const auto name = StoredList::text(entry, nameKey);
    const auto cooling = decodeCooling(entry);
    if (!bundleID || !name || !cooling) {
        return std::nullopt;
    }
    return TriggerApp{.bundleID = *bundleID, .name = *name, .cooling = *cooling};
}

}  // namespace

QString TriggerApp::coolingText() const {
    return cooling ? QString::fromStdString(std::string(CoolingProfile::rawValue(*cooling))) : QString();
}

std::optional<StoredList::Data> TriggerList::encode(const QList<TriggerApp>& apps) {
    QJsonArray entries;
    for (const TriggerApp& app : apps) {
        QJsonObject entry{{bundleIDKey, app.bundleID}, {nameKey, app.name}};
        if (app.cooling) {
            entry.insert(coolingKey, app.coolingText());
        }
        entries.append(entry);
    }
    return StoredList::write(entries);
}

QList<TriggerApp> TriggerList::decode(const StoredList::Data& data) {
    return StoredList::decode<TriggerApp>(data, decodeEntry);
}

}  // namespace corvane
