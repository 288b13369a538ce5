#pragma once

#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <optional>

#include "app/shell/StoredList.h"
#include "core/CoolingProfile.h"

namespace corvane {

/// The rule of one application: awake while it runs, and cooled if it says so.
struct TriggerApp {
    Q_GADGET
    Q_PROPERTY(QString bundleID MEMBER bundleID)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString cooling READ coolingText)

public:
    /// What identifies the application, and the rule.
    QString bundleID;
    /// What the user knows it by.
    QString name;
    /// Asked for while the application runs.
    std::optional<CoolingProfile::Kind> cooling;

    /// The profile's raw value; empty for none.
    [[nodiscard]] QString coolingText() const;

    bool operator==(const TriggerApp&) const = default;
};

/// Rules as they are kept in settings: an array of objects with the texts "bundleID", "name" and, unless
/// there is none, "cooling", a profile's raw value.
struct TriggerList {
    /// None for more than a stored list may hold.
    [[nodiscard]] static std::optional<StoredList::Data> encode(const QList<TriggerApp>& apps);
    /// Empty for anything but a stored list of rules.
    [[nodiscard]] static QList<TriggerApp> decode(const StoredList::Data& data);
};

}  // namespace corvane
