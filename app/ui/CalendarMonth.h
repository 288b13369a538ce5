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
/// English. Dates are local ones. Main loop.
class CalendarMonth : public QObject {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(bool isGerman READ isGerman WRITE setGerman NOTIFY changed)
    /// Any time in the month.
    Q_PROPERTY(QDateTime shown READ shown WRITE setShown NOTIFY changed)
    /// Such as "März 2026".
    Q_PROPERTY(QString title READ title NOTIFY changed)
    /// Of the columns; short.
    Q_PROPERTY(QStringList weekdays READ weekdays NOTIFY changed)
    /// Columns of the first row before the first day.
    Q_PROPERTY(int leadingDays READ leadingDays NOTIFY changed)
    /// Days of the month.
    Q_PROPERTY(int length READ length NOTIFY changed)

public:
    explicit CalendarMonth(QObject* parent = nullptr);

    [[nodiscard]] bool isGerman() const { return isGerman_; }
    [[nodiscard]] QDateTime shown() const { return first_.startOfDay(); }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QStringList weekdays() const;
    [[nodiscard]] int leadingDays() const;
    [[nodiscard]] int length() const { return first_.daysInMonth(); }

    void setGerman(bool isGerman);
    /// An invalid time is passed over.
    void setShown(const QDateTime& time);

    /// Shows another month, so many later; fewer than zero are earlier.
    Q_INVOKABLE void addMonths(int months);

    /// Whether `time` is on that day of the month, the first being 1.
    Q_INVOKABLE [[nodiscard]] bool holds(const QDateTime& time, int day) const;
    /// That day of the month, at the time of day of `time`.
    Q_INVOKABLE [[nodiscard]] QDateTime at(int day, const QDateTime& time) const;
    /// So many days and months later than `time`, at its time of day; a day that a month lacks is its last.
    Q_INVOKABLE [[nodiscard]] static QDateTime shifted(const QDateTime& time, int days, int months);
    /// The day of `time`, at another time of day.
    Q_INVOKABLE [[nodiscard]] static QDateTime withTime(const QDateTime& time, int hour, int minute);
    /// Whether the day of `time` is before that of `limit`; never for an invalid limit.
    Q_INVOKABLE [[nodiscard]] static bool isBefore(const QDateTime& time, const QDateTime& limit);
    /// The day in full, as a screen reader says it.
    Q_INVOKABLE [[nodiscard]] QString spokenDay(int day) const;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QLocale locale() const;
    void show(QDate firstDay);

    bool isGerman_ = false;
    QDate first_;
};

}  // namespace corvane
