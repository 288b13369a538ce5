#pragma once

#include <QMetaType>
#include <QObject>

#include "app/awake/DriveItem.h"

namespace corvane {

/// A chosen drive as the panel lists it.
struct DriveRow {
    Q_GADGET
    Q_PROPERTY(corvane::DriveItem drive MEMBER drive)
    Q_PROPERTY(bool exists MEMBER exists)

public:
    DriveItem drive;
    /// It is mounted.
    bool exists = false;

    bool operator==(const DriveRow&) const = default;
};

}  // namespace corvane
