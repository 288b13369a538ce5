#pragma once

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQmlIntegration>

namespace corvane {

/// A month as a calendar shows it: rows of seven days, the first of them a Monday in German, a Sunday in
/// English. Times are local ones; the first day of a month is 1. Main loop.
class CalendarMonth : public QObject {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(bool isGerman READ isGerman WRITE setGerman NOTIFY changed)
    /// The selected time. Its month is shown when it is set; an invalid one is passed over.
    Q_PROPERTY(QDateTime selected READ selected WRITE setSelected NOTIFY changed)
    /// Such as "März 2026".
    Q_PROPERTY(QString title READ title NOTIFY changed)
    /// Of the columns; short.
    Q_PROPERTY(QStringList weekdays READ weekdays NOTIFY changed)
    /// The month's days in full, as a screen reader says them.
    Q_PROPERTY(QStringList days READ days NOTIFY changed)
    /// Columns of the first row before the first day.
    Q_PROPERTY(int leadingDays READ leadingDays NOTIFY changed)
    /// 0 when the selected day is in another month.
    Q_PROPERTY(int selectedDay READ selectedDay NOTIFY changed)

public:
    explicit CalendarMonth(QObject* parent = nullptr);

    [[nodiscard]] bool isGerman() const { return isGerman_; }
    [[nodiscard]] QDateTime selected() const { return selected_; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QStringList weekdays() const;
    [[nodiscard]] QStringList days() const;
    [[nodiscard]] int leadingDays() const;
    [[nodiscard]] int selectedDay() const;

    void setGerman(bool isGerman);
    void setSelected(const QDateTime& time);

    /// Shows another month, so many later; fewer than zero are earlier.
    Q_INVOKABLE void showLater(int months);

    // Other times than the selected one, for the taking.

    /// That day of the month shown, at the same time of day.
    Q_INVOKABLE [[nodiscard]] QDateTime onDay(int day) const;
    /// So many days and months later, at the same time of day. For a day that a month lacks: its last.
    Q_INVOKABLE [[nodiscard]] QDateTime later(int days, int months) const;
    /// The same day, at another time.
    Q_INVOKABLE [[nodiscard]] QDateTime atTime(int hour, int minute) const;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QLocale locale() const;
    [[nodiscard]] bool isShown(QDate day) const;

    bool isGerman_ = false;
    QDateTime selected_;
    /// Of the month that is shown.
    QDate firstDay_;
};

}  // namespace corvane
