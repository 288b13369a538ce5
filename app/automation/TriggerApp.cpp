#include "app/automation/TriggerApp.h"

namespace corvane {

namespace {

const QString bundleIDKey = QStringLiteral("bundleID");
const QString nameKey = QStringLiteral("name");
const QString coolingKey = QStringLiteral("cooling");

/// False for what is neither a cooling nor its absence.
bool takeCooling(const QJsonValue& value, TriggerApp& app) {
    if (value.isUndefined() || value.isNull()) {
        return true;
    }
    app.cooling = CoolingProfile::fromRawValue(value.toString().toStdString());
    return app.cooling.has_value();
}

std::optional<TriggerApp> decodeEntry(const QJsonObject& entry) {
    const auto bundleID = StoredList::text(entry, bundleIDKey);
    const auto name = StoredList::text(entry, nameKey);
    if (!bundleID || !name) {
        return std::nullopt;
    }
    TriggerApp app{.bundleID = *bundleID, .name = *name, .cooling = std::nullopt};
    return takeCooling(entry.value(coolingKey), app) ? std::optional(app) : std::nullopt;
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
