#pragma once

#include <QObject>
#include <QString>

#include "app/session/SleepManager.h"
#include "app/shell/Lang.h"

namespace corvane {

/// The head of the panel: what Corvane does at the moment, in the user's language. Everything is announced by
/// one signal, for all of it hangs together. Main loop.
class StatusHeader final : public QObject {
    Q_OBJECT

    /// Corvane does something.
    Q_PROPERTY(bool active READ active NOTIFY changed)
    /// The most important of what it does.
    Q_PROPERTY(QString label READ label NOTIFY changed)
    /// How long the session still lasts; empty without one that ends.
    Q_PROPERTY(QString sessionLine READ sessionLine NOTIFY changed)
    /// Why the automation is at work; empty while it is not.
    Q_PROPERTY(QString automationLine READ automationLine NOTIFY changed)

public:
    /// Both outlive the header.
    StatusHeader(SleepManager& manager, const Lang& lang);

    [[nodiscard]] bool active() const;
    [[nodiscard]] QString label() const;
    [[nodiscard]] QString sessionLine() const;
    [[nodiscard]] QString automationLine() const;

    /// The language has changed: announces the texts.
    Q_SLOT void retranslate() { Q_EMIT changed(); }

Q_SIGNALS:
    /// Something may have changed.
    void changed();

private:
    /// The first that holds is shown.
    enum class Status { awake, lid, cooling, watching, automation, inactive };
    [[nodiscard]] Status status() const;

    SleepManager& manager_;
    const Lang& lang_;
};

}  // namespace corvane
