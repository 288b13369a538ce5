#pragma once

#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>

namespace corvane {

/// A duration that the panel offers as a chip.
struct DurationChoice {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(int seconds MEMBER seconds)

public:
    /// The same in every language.
    QString label;
    int seconds = 0;

    /// Of a keep-awake session, and of a boost.
    [[nodiscard]] static QList<DurationChoice> ofSleep();
    [[nodiscard]] static QList<DurationChoice> ofFans();

    bool operator==(const DurationChoice&) const = default;
};

}  // namespace corvane
