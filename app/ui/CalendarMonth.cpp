#include "app/ui/CalendarMonth.h"

#include <QTime>

namespace corvane {

namespace {

constexpr int daysInWeek = 7;

QDate firstOfMonth(QDate date) {
    return {date.year(), date.month(), 1};
}

}  // namespace

CalendarMonth::CalendarMonth(QObject* parent) : QObject(parent), first_(1970, 1, 1) {}

QLocale CalendarMonth::locale() const {
    return isGerman_ ? QLocale(QLocale::German, QLocale::Germany)
                     : QLocale(QLocale::English, QLocale::UnitedStates);
}

QString CalendarMonth::title() const {
    return locale().toString(first_, QStringLiteral("MMMM yyyy"));
}

QStringList CalendarMonth::weekdays() const {
    const QLocale names = locale();
    QStringList weekdays;
    for (int column = 0; column < daysInWeek; ++column) {
        const int day = (names.firstDayOfWeek() - 1 + column) % daysInWeek + 1;
        weekdays.append(names.standaloneDayName(day, QLocale::ShortFormat));
    }
    return weekdays;
}

int CalendarMonth::leadingDays() const {
    return (first_.dayOfWeek() - locale().firstDayOfWeek() + daysInWeek) % daysInWeek;
}

void CalendarMonth::setGerman(bool isGerman) {
    if (isGerman_ != isGerman) {
        isGerman_ = isGerman;
        Q_EMIT changed();
    }
}

void CalendarMonth::setShown(const QDateTime& time) {
    if (time.isValid()) {
        show(firstOfMonth(time.toLocalTime().date()));
    }
}

void CalendarMonth::addMonths(int months) {
    show(first_.addMonths(months));
}

void CalendarMonth::show(QDate firstDay) {
    if (firstDay.isValid() && first_ != firstDay) {
        first_ = firstDay;
        Q_EMIT changed();
    }
}

bool CalendarMonth::holds(const QDateTime& time, int day) const {
    return time.toLocalTime().date() == first_.addDays(day - 1);
}

QDateTime CalendarMonth::at(int day, const QDateTime& time) const {
    return {first_.addDays(day - 1), time.toLocalTime().time()};
}

QDateTime CalendarMonth::shifted(const QDateTime& time, int days, int months) {
    return time.toLocalTime().addMonths(months).addDays(days);
}

QDateTime CalendarMonth::withTime(const QDateTime& time, int hour, int minute) {
    return {time.toLocalTime().date(), QTime(hour, minute)};
}

bool CalendarMonth::isBefore(const QDateTime& time, const QDateTime& limit) {
    return limit.isValid() && time.toLocalTime().date() < limit.toLocalTime().date();
}

QString CalendarMonth::spokenDay(int day) const {
    return locale().toString(first_.addDays(day - 1), QLocale::LongFormat);
}

}  // namespace corvane
