#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <optional>

#include "app/fan/FanController.h"
#include "app/shell/Lang.h"

namespace corvane {

/// How hot the computer is and how fast its fans turn, as the panel shows it. Everything is announced by one
/// signal, for it changes together, with the poll. Main loop.
///
/// The colours are roles, which the theme maps: "green", "lime", "orange", "ember" and "red" of a
/// temperature, "yellow", "orange" and "red" of throttling.
class TemperatureBadge final : public QObject {
    Q_OBJECT

    /// There has been a temperature of the CPU.
    Q_PROPERTY(bool isKnown READ isKnown NOTIFY changed)
    /// Of the CPU, "64°"; empty while it is not known, like its word and its colour's role.
    Q_PROPERTY(QString temperature READ temperature NOTIFY changed)
    Q_PROPERTY(QString word READ word NOTIFY changed)
    Q_PROPERTY(QString colorRole READ colorRole NOTIFY changed)
    /// "58°"; empty while the helper reports none.
    Q_PROPERTY(QString gpuTemperature READ gpuTemperature NOTIFY changed)
    /// "2310 rpm", of the fastest fan; empty without fans.
    Q_PROPERTY(QString rpmLine READ rpmLine NOTIFY changed)
    /// What the system says of its heat, and its colour's role; empty while that is nothing.
    Q_PROPERTY(QString throttleLabel READ throttleLabel NOTIFY changed)
    Q_PROPERTY(QString throttleRole READ throttleRole NOTIFY changed)
    /// °C, oldest first.
    Q_PROPERTY(QList<double> trend READ trend NOTIFY changed)

public:
    /// Both outlive the badge.
    TemperatureBadge(const FanController& fan, const Lang& lang);

    [[nodiscard]] bool isKnown() const { return cpuTemperature().has_value(); }
    [[nodiscard]] QString temperature() const;
    [[nodiscard]] QString word() const;
    [[nodiscard]] QString colorRole() const;
    [[nodiscard]] QString gpuTemperature() const;
    [[nodiscard]] QString rpmLine() const;
    [[nodiscard]] QString throttleLabel() const;
    [[nodiscard]] QString throttleRole() const;
    [[nodiscard]] QList<double> trend() const { return fan_.tempTrend(); }

    /// The language has changed: announces the texts.
    Q_SLOT void retranslate() { Q_EMIT changed(); }

Q_SIGNALS:
    /// Something may have changed.
    void changed();

private:
    /// Smoothed, or else raw, °C.
    [[nodiscard]] std::optional<double> cpuTemperature() const;

    const FanController& fan_;
    const Lang& lang_;
};

}  // namespace corvane
