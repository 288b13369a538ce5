#pragma once

#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <optional>

#include "app/shell/StoredList.h"

namespace corvane {

/// A drive that the user chose, or can choose.
struct DriveItem {
    Q_GADGET
    Q_PROPERTY(QString path MEMBER path)
    Q_PROPERTY(QString name MEMBER name)

public:
    /// Where the drive is mounted, absolute; its identity.
    QString path;
    /// What the user knows it by.
    QString name;

    bool operator==(const DriveItem&) const = default;
};

/// Drives as they are kept in settings: an array of objects with the texts "path" and "name".
struct DriveList {
    /// None for more than a stored list may hold.
    [[nodiscard]] static std::optional<StoredList::Data> encode(const QList<DriveItem>& drives);
    /// Empty for anything but a stored list of drives.
    [[nodiscard]] static QList<DriveItem> decode(const StoredList::Data& data);
};

}  // namespace corvane
